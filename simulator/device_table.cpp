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

/// What only the device writes.
constexpr Row report(const char *path, const char *factory)
{
    return {path, {Kind::Opaque}, factory, false};
}

constexpr Row setting(const char *path, const Type &type, const char *factory)
{
    return {path, type, factory};
}

constexpr Row command(const char *path, const Type &argument)
{
    return {path, argument, ""};
}

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

} // namespace

const std::vector<Row> &deviceTable()
{
    // Phone, USB host and voice cues report for themselves; what stands here completes the tree.
    static const std::vector<Row> table{
        report("/info", "{}"),
        report("/status/voice_cue/{4}/valid", "true"),
        report("/status/usb/state", R"("disconnected")"),
        report("/status/bluetooth/state", R"("idle")"),
        report("/status/bluetooth/list_size", "0"),
        report("/status/bluetooth/list/{..8}/mac", ""),
        report("/status/bluetooth/list/{..8}/name", ""),
        setting("/status/bluetooth/list/{..8}/keep", Flag, ""),
        report("/status/bluetooth/device", "{}"),

        setting("/system/network/ip_mode", oneOf("static dhcp"), R"("dhcp")"),
        setting("/system/network/static_ip", Address, R"("192.168.1.50")"),
        setting("/system/network/static_netmask", {Kind::Netmask}, R"("255.255.255.0")"),
        setting("/system/network/static_gateway", Address, R"("192.168.1.1")"),
        setting("/system/notifications/enable", Flag, "false"),
        setting("/system/notifications/ip", Group, R"("239.255.77.20")"),
        setting("/system/notifications/port", Port, "47720"),
        setting("/system/metering/ip", Group, R"("239.255.77.10")"),
        setting("/system/metering/port", Port, "47710"),
        setting("/system/function_gen/enable", Flag, "false"),
        setting("/system/function_gen/frequency", whole(10, 20000), "1000"), // Hz
        setting("/system/function_gen/amplitude", whole(-100, 0), "-20"), // dB
        setting("/system/usb/priority", Flag, "false"),
        setting("/system/usb/mode", oneOf(UsbModes), R"("2x2")"),
        setting("/system/bluetooth/enable", Flag, "true"),
        setting("/system/bluetooth/button", Flag, "true"),
        setting("/system/bluetooth/name", Name, R"("")"), // the device's name
        setting("/system/bluetooth/connection_mode", oneOf("basic reconnect exclusive"), R"("reconnect")"),
        setting("/system/bluetooth/profile", oneOf("both media hfp"), R"("both")"),
        setting("/system/voice_cue/{4}/enable", Flag, "true"),

        setting("/preset/dsp/dante_rx/{4}/gain", Db, "[0, 0, -3, -3]"),
        setting("/preset/dsp/dante_rx/{4}/invert", Flag, "false"),
        setting("/preset/dsp/dante_rx/{4}/mute", Flag, "false"),
        setting("/preset/dsp/dante_tx/{4}/gain", Db, "0"),
        setting("/preset/dsp/dante_tx/{4}/limiter/enable", Flag, "false"),
        setting("/preset/dsp/dante_tx/{4}/limiter/threshold", Db, "0"),
        setting("/preset/dsp/dante_tx/{4}/mute", Flag, "false"),
        setting("/preset/dsp/usb_playback/{2}/gain", Db, "-6"),
        setting("/preset/dsp/usb_playback/{2}/invert", Flag, "false"),
        setting("/preset/dsp/usb_playback/{2}/mute", Flag, "false"),
        setting("/preset/dsp/usb_record/{2}/gain", Db, "0"),
        setting("/preset/dsp/usb_record/{2}/limiter/enable", Flag, "false"),
        setting("/preset/dsp/usb_record/{2}/limiter/threshold", Db, "0"),
        setting("/preset/dsp/usb_record/{2}/mute", Flag, "false"),
        setting("/preset/dsp/bt_sink/{2}/gain", Db, "0"),
        setting("/preset/dsp/bt_sink/{2}/invert", Flag, "false"),
        setting("/preset/dsp/bt_sink/{2}/mute", Flag, "false"),
        setting("/preset/dsp/bt_source/{1}/gain", Db, "0"),
        setting("/preset/dsp/bt_source/{1}/limiter/enable", Flag, "true"),
        setting("/preset/dsp/bt_source/{1}/limiter/threshold", Db, "-3"),
        setting("/preset/dsp/bt_source/{1}/mute", Flag, "false"),
        setting("/preset/dsp/voice_cue/{1}/gain", Db, "-10"),
        setting("/preset/dsp/voice_cue/{1}/mute", Flag, "false"),
        setting("/preset/dsp/mixer/{7}/{10}", Db, FactoryMixer),

        command("/control/identify", Flag),
        command("/control/defaults", whole(1, 1)),
        command("/control/reboot", Nothing),
        command("/control/req_metering", whole(0, 1000)),
        command("/control/save_preset", Slot),
        command("/control/load_preset", Slot),
        command("/control/bluetooth/pair", Nothing),
        command("/control/bluetooth/disconnect", Nothing),
        command("/control/bluetooth/clear_list", Nothing),
        command("/control/bluetooth/play", Nothing),
        command("/control/bluetooth/pause", Nothing),
        command("/control/bluetooth/prev", Nothing),
        command("/control/bluetooth/next", Nothing),
        command("/control/bluetooth/vol_up", Nothing),
        command("/control/bluetooth/vol_down", Nothing),
        command("/control/voice_cue/{4}/play", Nothing),
        // The targets are in the order of the cues.
        command("/control/fwdl/target", oneOf("VC_BT_PAIR VC_BT_END_PAIR VC_BT_SUCCESS VC_BT_FAIL")),
        command("/control/fwdl/uri", {Kind::Text, 1, 8192}),
    };
    return table;
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
