#include "simulator/device_table.h"

namespace sim {

namespace {

constexpr Type Flag{Kind::Bool};
constexpr Type Db{Kind::Integer, -100, 20};
constexpr Type Port{Kind::Integer, 1, 65535};
constexpr Type Address{Kind::Address};
constexpr Type Group{Kind::Group};
constexpr Type Name{Kind::Text, 1, 248}; // the limit of a Bluetooth device name, in bytes
constexpr Type Slot{Kind::Number, 0, PresetSlotCount - 1};
constexpr Type Nothing{Kind::True};

constexpr Type oneOf(const char *words)
{
    return {Kind::Word, 0, 0, words};
}

constexpr Type whole(int least, int most)
{
    return {Kind::Integer, least, most};
}

constexpr Type AnyText{Kind::Text};

/// What only the device writes.
constexpr Row report(const char *path, const Type &type, const char *factory, const char *about)
{
    return {path, type, factory, about, false};
}

constexpr Row setting(const char *path, const Type &type, const char *factory, const char *about)
{
    return {path, type, factory, about};
}

constexpr Row command(const char *path, const Type &argument, const char *about)
{
    return {path, argument, "", about};
}

constexpr char Gain[] = "dB";
constexpr char Invert[] = "polarity is inverted";
constexpr char Mute[] = "the channel is silent";
constexpr char Limiter[] = "nothing louder than the threshold passes";
constexpr char Threshold[] = "dB";

constexpr char UsbModes[]
    = "2x2 speakerphone_no_ec speakerphone_ec speakerphone_telephony_no_ec speakerphone_telephony_ec";

// A row a sink: network 1-4, USB 1-2, Bluetooth. In it a crosspoint a source: network 1-4, USB 1-2,
// Bluetooth 1-2, voice cue, tone generator. -100 is off.
constexpr char FactoryMixer[] = R"([
    [-100, -100, -100, -100,   -6, -100,   -6, -100,  -10, -100],
    [-100, -100, -100, -100, -100,   -6, -100,   -6,  -10, -100],
    [-100, -100, -100, -100,    0, -100, -100, -100, -100, -100],
    [-100, -100, -100, -100, -100,    0, -100, -100, -100, -100],
    [   0, -100,   -6, -100, -100, -100,   -6, -100, -100, -100],
    [-100,    0, -100,   -6, -100, -100, -100,   -6, -100, -100],
    [  -3,   -3, -100, -100, -100, -100, -100, -100, -100, -100]
])";

constexpr Row Table[] = {
    report("/info/name", AnyText, R"("")", "as announced"),
    report("/info/product", AnyText, R"("")", "as announced"),
    report("/info/model", AnyText, R"("")", "as announced"),
    report("/info/mac", AnyText, R"("")", "as announced"),
    report("/info/version", AnyText, R"("")", "as announced"),
    report("/info/hardware", AnyText, R"("")", "revision"),
    report("/info/serial", AnyText, R"("")", "serial number"),
    // Phone, computer and voice cues report for themselves; what stands here completes the tree.
    report("/status/voice_cue/{4}/valid", Flag, "true",
           "the cue holds a recording; false while one is fetched, and then it cannot be switched on"),
    report("/status/usb/state", oneOf("connected suspended disconnected"), R"("disconnected")",
           "the computer at the USB socket"),
    report("/status/bluetooth/state", oneOf("idle discoverable pairing connecting connected"), R"("idle")",
           "what Bluetooth does"),
    report("/status/bluetooth/list_size", whole(0, PairedPhonesMost), "0", "how many phones are paired"),
    report("/status/bluetooth/list/{..8}/mac", AnyText, "",
           "address of a paired phone; the latest is entry 0"),
    report("/status/bluetooth/list/{..8}/name", AnyText, "", "its name"),
    setting("/status/bluetooth/list/{..8}/keep", Flag, "", "it is protected from clear_list"),
    report("/status/bluetooth/device/name", AnyText, R"("")", "the phone that is connected, or about to be"),
    report("/status/bluetooth/device/rssi", whole(-130, -50), "-128", "dBm; -128 without a phone"),
    report("/status/bluetooth/device/song", AnyText, R"("")", "what it plays"),
    report("/status/bluetooth/device/artist", AnyText, R"("")", "by whom"),
    report("/status/bluetooth/device/album", AnyText, R"("")", "from which album"),
    report("/status/bluetooth/device/playing", Flag, "false", "it plays"),
    report("/status/bluetooth/device/volume", whole(0, 15), "12", "of the phone"),

    setting("/system/network/ip_mode", oneOf("static dhcp"), R"("dhcp")",
            "where the device has its address from"),
    setting("/system/network/static_ip", Address, R"("192.168.1.50")", "used with \"static\""),
    setting("/system/network/static_netmask", {Kind::Netmask}, R"("255.255.255.0")",
            "used with \"static\"; ones, then zeros"),
    setting("/system/network/static_gateway", Address, R"("192.168.1.1")", "used with \"static\""),
    setting("/system/notifications/enable", Flag, "false", "notifications go to the group"),
    setting("/system/notifications/ip", Group, R"("239.255.77.20")", "the group"),
    setting("/system/notifications/port", Port, "47720", "its UDP port"),
    setting("/system/metering/ip", Group, R"("239.255.77.10")", "the group that levels go to"),
    setting("/system/metering/port", Port, "47710", "its UDP port"),
    setting("/system/function_gen/enable", Flag, "false", "the tone generator sounds"),
    setting("/system/function_gen/frequency", whole(10, 20000), "1000", "Hz"),
    setting("/system/function_gen/amplitude", whole(-100, 0), "-20", "dB"),
    setting("/system/usb/priority", Flag, "false", "USB priority is enabled"),
    setting("/system/usb/mode", oneOf(UsbModes), R"("2x2")", "what the computer sees"),
    setting("/system/bluetooth/enable", Flag, "true", "Bluetooth is on"),
    setting("/system/bluetooth/button", Flag, "true", "the pairing button is enabled"),
    setting("/system/bluetooth/name", Name, R"("")", "as phones see it; the device's name at first"),
    setting("/system/bluetooth/connection_mode", oneOf("basic reconnect exclusive"), R"("reconnect")",
            "whom an idle device calls: nobody, the latest phone, the latest protected one"),
    setting("/system/bluetooth/profile", oneOf("both media hfp"), R"("both")",
            "what is bridged: music and calls, music, calls"),
    setting("/system/voice_cue/{4}/enable", Flag, "true", "the cue is played at its event"),

    setting("/preset/dsp/dante_rx/{4}/gain", Db, "[0, 0, -3, -3]", Gain),
    setting("/preset/dsp/dante_rx/{4}/invert", Flag, "false", Invert),
    setting("/preset/dsp/dante_rx/{4}/mute", Flag, "false", Mute),
    setting("/preset/dsp/dante_tx/{4}/gain", Db, "0", Gain),
    setting("/preset/dsp/dante_tx/{4}/limiter/enable", Flag, "false", Limiter),
    setting("/preset/dsp/dante_tx/{4}/limiter/threshold", Db, "0", Threshold),
    setting("/preset/dsp/dante_tx/{4}/mute", Flag, "false", Mute),
    setting("/preset/dsp/usb_playback/{2}/gain", Db, "-6", Gain),
    setting("/preset/dsp/usb_playback/{2}/invert", Flag, "false", Invert),
    setting("/preset/dsp/usb_playback/{2}/mute", Flag, "false", Mute),
    setting("/preset/dsp/usb_record/{2}/gain", Db, "0", Gain),
    setting("/preset/dsp/usb_record/{2}/limiter/enable", Flag, "false", Limiter),
    setting("/preset/dsp/usb_record/{2}/limiter/threshold", Db, "0", Threshold),
    setting("/preset/dsp/usb_record/{2}/mute", Flag, "false", Mute),
    setting("/preset/dsp/bt_sink/{2}/gain", Db, "0", Gain),
    setting("/preset/dsp/bt_sink/{2}/invert", Flag, "false", Invert),
    setting("/preset/dsp/bt_sink/{2}/mute", Flag, "false", Mute),
    setting("/preset/dsp/bt_source/{1}/gain", Db, "0", Gain),
    setting("/preset/dsp/bt_source/{1}/limiter/enable", Flag, "true", Limiter),
    setting("/preset/dsp/bt_source/{1}/limiter/threshold", Db, "-3", Threshold),
    setting("/preset/dsp/bt_source/{1}/mute", Flag, "false", Mute),
    setting("/preset/dsp/voice_cue/{1}/gain", Db, "-10", Gain),
    setting("/preset/dsp/voice_cue/{1}/mute", Flag, "false", Mute),
    setting("/preset/dsp/mixer/{7}/{10}", Db, FactoryMixer, "dB; -100 is off"),

    command("/control/identify", Flag, "the device shows which one it is"),
    command("/control/defaults", whole(1, 1),
            "everything as it left the factory, the paired phones included; preset slots are emptied"),
    command("/control/reboot", Nothing, "answered first; then 1 s until it is silent, and 2 s of silence"),
    command("/control/req_metering", whole(0, 1000),
            "above 0: levels for at least 10 s from now; 0: no more levels"),
    command("/control/save_preset", Slot, "keeps \"/preset\" and \"/system/function_gen\" in that slot"),
    command("/control/load_preset", Slot,
            "recalls what the slot keeps; refused for a slot that was never stored"),
    command("/control/bluetooth/pair", Nothing, "discoverable; refused while Bluetooth is off"),
    command("/control/bluetooth/disconnect", Nothing, "ends a connection or a pairing; refused when idle"),
    command("/control/bluetooth/clear_list", Nothing, "forgets the phones that are not protected"),
    command("/control/bluetooth/play", Nothing, "key of the phone; refused when none is connected"),
    command("/control/bluetooth/pause", Nothing, "key of the phone; refused when none is connected"),
    command("/control/bluetooth/prev", Nothing, "key of the phone; refused when none is connected"),
    command("/control/bluetooth/next", Nothing, "key of the phone; refused when none is connected"),
    command("/control/bluetooth/vol_up", Nothing, "key of the phone; refused when none is connected"),
    command("/control/bluetooth/vol_down", Nothing, "key of the phone; refused when none is connected"),
    command("/control/voice_cue/{4}/play", Nothing, "refused for a cue without a recording"),
    command("/control/fwdl/target", oneOf("VC_BT_PAIR VC_BT_END_PAIR VC_BT_SUCCESS VC_BT_FAIL"),
            "the cue whose recording is replaced; the four are in the order of the cues"),
    command("/control/fwdl/uri", {Kind::Text, 1, 8192},
            "tftp://ADDRESS:PORT/FILE; refused while another file is fetched"),
};

} // namespace

std::vector<Row> deviceTable()
{
    return {std::begin(Table), std::end(Table)};
}

ParameterTree factoryTree(const Identity &identity)
{
    ParameterTree tree(treeOf(deviceTable()));
    tree.put(QStringLiteral("/info"), identity.info());
    tree.put(QStringLiteral("/system/bluetooth/name"), identity.name());
    tree.put(QStringLiteral("/control"), QJsonValue::Undefined); // commands hold nothing
    return tree;
}

} // namespace sim
