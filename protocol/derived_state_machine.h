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
    void enter_info();
    void enter_status_voice_cue();
    void enter_status_usb();
    void enter_status_bluetooth();
    void enter_system_network();
    void enter_system_notifications();
    void enter_system_metering();
    void enter_system_func_gen();
    void enter_system_usb();
    void enter_system_bluetooth();
    void enter_system_voice_cue();
    void enter_preset_dante_rx();
    void enter_preset_dante_tx();
    void enter_preset_usb_playback();
    void enter_preset_usb_record();
    void enter_preset_bt_sink();
    void enter_preset_bt_source();
    void enter_preset_voice_que();
    void enter_preset_mixer();

    /// The number in the fourth "_"-separated part of a file name, before ".json": 2.5 for "a_b_c_2.5.json".
    /// 0 when there is no fourth part.
    double versionFromString(QString name);

private:
    void request(Section section);

    DeviceStateOwner *m_window;
};
