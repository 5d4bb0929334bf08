#include "protocol/plugin_query_state_machine.h"

#include <QFinalState>
#include <QState>
#include <QTimer>

namespace {

constexpr int DelayedStartMs = 25;

} // namespace

PluginQueryStateMachine::PluginQueryStateMachine(QObject *parent)
    : QObject(parent)
    , m_machine(new QStateMachine(this))
{
    connect(this, &PluginQueryStateMachine::nextState, this, &PluginQueryStateMachine::nextStateHandled);
}

PluginQueryStateMachine::~PluginQueryStateMachine()
{
    m_machine->stop();
    delete m_machine;
    m_machine = nullptr;
    m_device = nullptr;
}

void PluginQueryStateMachine::replaceMachine()
{
    delete m_machine;
    m_machine = new QStateMachine(this);
}

QState *PluginQueryStateMachine::addGroup(QStateMachine *machine, QState **inner)
{
    auto *group = new QState(machine);
    *inner = new QState(group);
    auto *left = new QFinalState(group);
    (*inner)->addTransition(this, &PluginQueryStateMachine::nextState, left);
    group->setInitialState(*inner);
    return group;
}

void PluginQueryStateMachine::buildStateMachine()
{
    QState *query = addStep(m_machine, &PluginQueryStateMachine::enter_query);
    QState *done = addStep(m_machine, &PluginQueryStateMachine::enter_sm_done);
    query->addTransition(query, &QState::finished, done);
    m_machine->setInitialState(query);
}

void PluginQueryStateMachine::start()
{
    if (m_machine)
        m_machine->start();
}

void PluginQueryStateMachine::send(const QByteArray &bytes)
{
    emit sendVelmarAsciiGetRequest(m_device->name(), bytes);
}

void PluginQueryStateMachine::enter_query()
{
    if (!m_device)
        return;
    m_queryState = Sent;
    send(QByteArrayLiteral("QUERY\r"));
}

void PluginQueryStateMachine::enter_sm_done()
{
    if (!m_device)
        return;
    m_queryState = Done;
    finish();
}

void PluginQueryStateMachine::nextStateHandled()
{
    if (m_device)
        QTimer::singleShot(DelayedStartMs, this, &PluginQueryStateMachine::delayed_start);
}

void PluginQueryStateMachine::delayed_start()
{
    if (m_queryState == Done)
        finish();
}

void PluginQueryStateMachine::timedOut()
{
    if (m_machine)
        m_queryState = TimedOut;
}

void PluginQueryStateMachine::finish()
{
    if (!m_machine)
        return;
    const QPointer<PluginQueryStateMachine> alive(this);
    emit sm_finished();
    if (!alive)
        return;
    m_machine->stop();
    m_queryState = Idle;
}
