#include "protocol/derived_state_machine.h"

#include "protocol/messages.h"
#include "protocol/reply_handlers.h"

#include <QState>

DerivedStateMachine::DerivedStateMachine(QObject *parent)
    : PluginQueryStateMachine(parent)
    , m_window(dynamic_cast<DeviceStateOwner *>(parent))
{
}

void DerivedStateMachine::buildStateMachine()
{
    using Step = void (DerivedStateMachine::*)();
    static constexpr Step Steps[] = {
        &DerivedStateMachine::enter_info,
        &DerivedStateMachine::enter_status_voice_cue,
        &DerivedStateMachine::enter_status_usb,
        &DerivedStateMachine::enter_status_bluetooth,
        &DerivedStateMachine::enter_system_usb,
        &DerivedStateMachine::enter_system_bluetooth,
        &DerivedStateMachine::enter_system_network,
        &DerivedStateMachine::enter_system_notifications,
        &DerivedStateMachine::enter_system_func_gen,
        &DerivedStateMachine::enter_system_metering,
        &DerivedStateMachine::enter_system_voice_cue,
        &DerivedStateMachine::enter_preset_dante_rx,
        &DerivedStateMachine::enter_preset_dante_tx,
        &DerivedStateMachine::enter_preset_usb_playback,
        &DerivedStateMachine::enter_preset_usb_record,
        &DerivedStateMachine::enter_preset_bt_sink,
        &DerivedStateMachine::enter_preset_bt_source,
        &DerivedStateMachine::enter_preset_voice_que,
        &DerivedStateMachine::enter_preset_mixer,
        &DerivedStateMachine::enter_sm_done,
    };
    replaceMachine();
    QState *previous = nullptr;
    for (Step step : Steps) {
        QState *group = addStep(machine(), step);
        if (previous)
            previous->addTransition(previous, &QState::finished, group);
        else
            machine()->setInitialState(group);
        previous = group;
    }
}

void DerivedStateMachine::request(Section section)
{
    const QPointer<DerivedStateMachine> alive(this);
    for (const SectionGet &get : getsOf(section)) {
        if (!alive || !device())
            return;
        if (m_window)
            m_window->getHandlers().insert(get.path, get.store);
        send(message::get(get.path));
    }
}

double DerivedStateMachine::versionFromString(QString name)
{
    const int end = name.indexOf(QLatin1String(".json"));
    return name.left(end).section(QLatin1Char('_'), 3, 3).toDouble();
}
