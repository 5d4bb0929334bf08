#include "simulator/factory_state.h"

#include <QJsonDocument>

namespace sim {

namespace {

// The status part holds what the tree needs to be complete; the phone, the USB host and the voice cues
// write their own reports into it.
constexpr char factoryText[] = R"({
"status": {
    "voice_cue": [{"valid": true}, {"valid": true}, {"valid": true}, {"valid": true}],
    "usb": {"state": "disconnected"},
    "bluetooth": {"state": "idle", "list_size": 0, "list": [], "device": {}}
},
"system": {
    "network": {
        "ip_mode": "dhcp",
        "static_ip": "192.168.1.50", "static_netmask": "255.255.255.0", "static_gateway": "192.168.1.1"
    },
    "notifications": {"enable": false, "ip": "239.255.77.20", "port": 47720},
    "metering": {"ip": "239.255.77.10", "port": 47710},
    "function_gen": {"enable": false, "frequency": 1000, "amplitude": -20},
    "usb": {"priority": false, "mode": "2x2"},
    "bluetooth": {
        "enable": true, "button": true, "name": "",
        "connection_mode": "reconnect", "profile": "both"
    },
    "voice_cue": [{"enable": true}, {"enable": true}, {"enable": true}, {"enable": true}]
},
"preset": {"dsp": {
    "dante_rx": [
        {"gain": 0, "invert": false, "mute": false}, {"gain": 0, "invert": false, "mute": false},
        {"gain": -3, "invert": false, "mute": false}, {"gain": -3, "invert": false, "mute": false}
    ],
    "dante_tx": [
        {"gain": 0, "limiter": {"enable": false, "threshold": 0}, "mute": false},
        {"gain": 0, "limiter": {"enable": false, "threshold": 0}, "mute": false},
        {"gain": 0, "limiter": {"enable": false, "threshold": 0}, "mute": false},
        {"gain": 0, "limiter": {"enable": false, "threshold": 0}, "mute": false}
    ],
    "usb_playback": [
        {"gain": -6, "invert": false, "mute": false}, {"gain": -6, "invert": false, "mute": false}
    ],
    "usb_record": [
        {"gain": 0, "limiter": {"enable": false, "threshold": 0}, "mute": false},
        {"gain": 0, "limiter": {"enable": false, "threshold": 0}, "mute": false}
    ],
    "bt_sink": [
        {"gain": 0, "invert": false, "mute": false}, {"gain": 0, "invert": false, "mute": false}
    ],
    "bt_source": [{"gain": 0, "limiter": {"enable": true, "threshold": -3}, "mute": false}],
    "voice_cue": [{"gain": -10, "mute": false}],
    "mixer": [
        [-100, -100, -100, -100,   -6, -100,   -6, -100,  -10, -100],
        [-100, -100, -100, -100, -100,   -6, -100,   -6,  -10, -100],
        [-100, -100, -100, -100,    0, -100, -100, -100, -100, -100],
        [-100, -100, -100, -100, -100,    0, -100, -100, -100, -100],
        [   0, -100,   -6, -100, -100, -100,   -6, -100, -100, -100],
        [-100,    0, -100,   -6, -100, -100, -100,   -6, -100, -100],
        [  -3,   -3, -100, -100, -100, -100, -100, -100, -100, -100]
    ]
}}
})";

} // namespace

QJsonObject factoryState(const Identity &identity)
{
    QJsonObject state = QJsonDocument::fromJson(factoryText).object();
    Q_ASSERT(!state.isEmpty());
    state.insert(QStringLiteral("info"), identity.info());
    QJsonObject system = state.value(QStringLiteral("system")).toObject();
    QJsonObject bluetooth = system.value(QStringLiteral("bluetooth")).toObject();
    bluetooth.insert(QStringLiteral("name"), identity.name());
    system.insert(QStringLiteral("bluetooth"), bluetooth);
    state.insert(QStringLiteral("system"), system);
    return state;
}

} // namespace sim
