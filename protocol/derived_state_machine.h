#pragma once

#include "protocol/plugin_query_state_machine.h"
#include "protocol/sections.h"

class DeviceStateOwner;

/// Reads the whole state of the device: nineteen steps, one per section, and an end. Steps send all their
/// requests at once and count accepted replies without looking at them, so the end comes with the nineteenth
/// accepted reply while later ones are still on their way.
class DerivedStateMachine : public PluginQueryStateMachine
{
    Q_OBJECT

public:
    /// @p parent is the editor window; its get-handler table takes the handlers of the requests.
    explicit DerivedStateMachine(QObject *parent);

    void buildStateMachine() override;

public slots:
    void enter_info() { request(Section::Info); }
    void enter_status_voice_cue() { request(Section::StatusVoiceCue); }
    void enter_status_usb() { request(Section::StatusUsb); }
    void enter_status_bluetooth() { request(Section::StatusBluetooth); }
    void enter_system_network() { request(Section::Network); }
    void enter_system_notifications() { request(Section::Notifications); }
    void enter_system_metering() { request(Section::Metering); }
    void enter_system_func_gen() { request(Section::ToneGenerator); }
    void enter_system_usb() { request(Section::Usb); }
    void enter_system_bluetooth() { request(Section::Bluetooth); }
    void enter_system_voice_cue() { request(Section::VoiceCue); }
    void enter_preset_dante_rx() { request(Section::DanteRx); }
    void enter_preset_dante_tx() { request(Section::DanteTx); }
    void enter_preset_usb_playback() { request(Section::UsbPlayback); }
    void enter_preset_usb_record() { request(Section::UsbRecord); }
    void enter_preset_bt_sink() { request(Section::BtSink); }
    void enter_preset_bt_source() { request(Section::BtSource); }
    void enter_preset_voice_que() { request(Section::DspVoiceCue); }
    void enter_preset_mixer() { request(Section::Mixer); }

    /// The number in the fourth "_"-separated part of a file name, before ".json": 2.5 for "a_b_c_2.5.json".
    /// 0 when there is no fourth part.
    double versionFromString(QString name);

private:
    void request(Section section);

    DeviceStateOwner *m_window;
};
