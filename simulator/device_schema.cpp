#include "simulator/device_schema.h"

namespace sim {

using namespace node;

namespace {

constexpr int lowestDb = -100;
constexpr int highestDb = 20;
constexpr int longestName = 248; // bytes, the limit of a Bluetooth device name

Node gainNode()
{
    return integer(lowestDb, highestDb);
}

Node portNode()
{
    return integer(1, 65535);
}

Node inputStrip()
{
    return object({{QStringLiteral("gain"), gainNode()},
                   {QStringLiteral("invert"), boolean()},
                   {QStringLiteral("mute"), boolean()}});
}

Node outputStrip()
{
    const Node limiter
        = object({{QStringLiteral("enable"), boolean()}, {QStringLiteral("threshold"), gainNode()}});
    return object({{QStringLiteral("gain"), gainNode()},
                   {QStringLiteral("limiter"), limiter},
                   {QStringLiteral("mute"), boolean()}});
}

Node cueStrip()
{
    return object({{QStringLiteral("gain"), gainNode()}, {QStringLiteral("mute"), boolean()}});
}

Node bluetoothStatus()
{
    const Node phone = readOnly(object({{QStringLiteral("mac"), opaque()},
                                        {QStringLiteral("name"), opaque()},
                                        {QStringLiteral("keep"), boolean()}}));
    return readOnly(object({{QStringLiteral("state"), opaque()},
                            {QStringLiteral("list_size"), opaque()},
                            {QStringLiteral("list"), list(pairedPhonesMost, phone)},
                            {QStringLiteral("device"), opaque()}}));
}

Node statusTree()
{
    return readOnly(object({{QStringLiteral("voice_cue"), opaque()},
                            {QStringLiteral("usb"), opaque()},
                            {QStringLiteral("bluetooth"), bluetoothStatus()}}));
}

Node networkNode()
{
    return object({{QStringLiteral("ip_mode"), word({QStringLiteral("static"), QStringLiteral("dhcp")})},
                   {QStringLiteral("static_ip"), address()},
                   {QStringLiteral("static_netmask"), netmask()},
                   {QStringLiteral("static_gateway"), address()}});
}

Node usbNode()
{
    const QStringList modes{QStringLiteral("2x2"), QStringLiteral("speakerphone_no_ec"),
                            QStringLiteral("speakerphone_ec"), QStringLiteral("speakerphone_telephony_no_ec"),
                            QStringLiteral("speakerphone_telephony_ec")};
    return object({{QStringLiteral("mode"), word(modes)}, {QStringLiteral("priority"), boolean()}});
}

Node bluetoothNode()
{
    const QStringList modes{QStringLiteral("basic"), QStringLiteral("reconnect"),
                            QStringLiteral("exclusive")};
    const QStringList profiles{QStringLiteral("both"), QStringLiteral("media"), QStringLiteral("hfp")};
    return object({{QStringLiteral("enable"), boolean()},
                   {QStringLiteral("button"), boolean()},
                   {QStringLiteral("name"), text(1, longestName)},
                   {QStringLiteral("connection_mode"), word(modes)},
                   {QStringLiteral("profile"), word(profiles)}});
}

Node systemTree()
{
    const Node notifications = object({{QStringLiteral("enable"), boolean()},
                                       {QStringLiteral("ip"), group()},
                                       {QStringLiteral("port"), portNode()}});
    const Node metering = object({{QStringLiteral("ip"), group()}, {QStringLiteral("port"), portNode()}});
    const Node generator = object({{QStringLiteral("enable"), boolean()},
                                   {QStringLiteral("frequency"), integer(10, 20000)},
                                   {QStringLiteral("amplitude"), integer(lowestDb, 0)}});
    const Node cues = array(voiceCueCount, object({{QStringLiteral("enable"), boolean()}}));
    return object({{QStringLiteral("network"), networkNode()},
                   {QStringLiteral("notifications"), notifications},
                   {QStringLiteral("metering"), metering},
                   {QStringLiteral("function_gen"), generator},
                   {QStringLiteral("usb"), usbNode()},
                   {QStringLiteral("bluetooth"), bluetoothNode()},
                   {QStringLiteral("voice_cue"), cues}});
}

Node dspTree()
{
    return object({{QStringLiteral("dante_rx"), array(4, inputStrip())},
                   {QStringLiteral("dante_tx"), array(4, outputStrip())},
                   {QStringLiteral("usb_playback"), array(2, inputStrip())},
                   {QStringLiteral("usb_record"), array(2, outputStrip())},
                   {QStringLiteral("bt_sink"), array(2, inputStrip())},
                   {QStringLiteral("bt_source"), array(1, outputStrip())},
                   {QStringLiteral("voice_cue"), array(1, cueStrip())},
                   {QStringLiteral("mixer"), array(7, array(10, gainNode()))}});
}

} // namespace

Node deviceSchema()
{
    return object({{QStringLiteral("info"), opaque()},
                   {QStringLiteral("status"), statusTree()},
                   {QStringLiteral("system"), systemTree()},
                   {QStringLiteral("preset"), object({{QStringLiteral("dsp"), dspTree()}})}});
}

QStringList voiceCueIds()
{
    return {QStringLiteral("VC_BT_PAIR"), QStringLiteral("VC_BT_END_PAIR"), QStringLiteral("VC_BT_SUCCESS"),
            QStringLiteral("VC_BT_FAIL")};
}

} // namespace sim
