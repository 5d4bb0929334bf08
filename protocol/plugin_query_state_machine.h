#pragma once

#include "host/px_device.h"

#include <QByteArray>
#include <QObject>
#include <QPointer>
#include <QStateMachine>
#include <QString>

/// A query of a device's state as a state machine: each step sends requests, and each accepted reply,
/// reported by nextState(), leads to the next step. On its own it sends the one text command "QUERY\r".
class PluginQueryStateMachine : public QObject
{
    Q_OBJECT

public:
    enum QueryState { Idle = 0, Sent = 1, Done = 2, TimedOut = 3 };

    explicit PluginQueryStateMachine(QObject *parent = nullptr);
    ~PluginQueryStateMachine() override;

    /// The device to query, not owned; without one no step sends anything.
    void setDevice(pxDevice *device) { m_device = device; }
    pxDevice *device() const { return m_device; }
    int queryState() const { return m_queryState; }
    /// Owned by this object; null once the query is being destroyed.
    QStateMachine *machine() const { return m_machine; }

    virtual void buildStateMachine();

public slots:
    void enter_query();
    void enter_sm_done();
    void nextStateHandled();
    void start();
    void delayed_start();
    void timedOut();

signals:
    void nextState();
    void req_query(pxDevice *device);
    void req_param_lock(pxDevice *device);
    void sm_finished();
    void sendVelmarAsciiGetRequest(QString dev_name, QByteArray bytes);

protected:
    /// Adds a step to @p machine that calls @p enter from the event loop once it is entered and is left by
    /// nextState(). Chain the returned groups by their finished() signals.
    template <typename Machine>
    QState *addStep(QStateMachine *machine, void (Machine::*enter)());

    void replaceMachine();
    void send(const QByteArray &bytes);

private:
    QState *addGroup(QStateMachine *machine, QState **inner);
    void finish();

    QPointer<pxDevice> m_device;
    QStateMachine *m_machine;
    int m_queryState = Idle;
};

template <typename Machine>
QState *PluginQueryStateMachine::addStep(QStateMachine *machine, void (Machine::*enter)())
{
    QState *inner = nullptr;
    QState *group = addGroup(machine, &inner);
    // Queued: a step that starts or destroys a query must not do so inside a transition.
    connect(inner, &QState::entered, static_cast<Machine *>(this), enter, Qt::QueuedConnection);
    return group;
}
