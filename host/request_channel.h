#pragma once

#include "host/plexo_host_export.h"
#include "host/px_device.h"

#include <QByteArray>
#include <QObject>
#include <QPointer>
#include <QString>
#include <QVector>

class QTimer;

/// One message on its way to a device.
struct PendingRequest
{
    QString dev_name; ///< the name by which the host routes it
    QByteArray bytes; ///< exactly as sent
};

/// One side of a plugin's way to its device. Requests leave one at a time, commands before queries, and each
/// ends with an answer, a time-out or clear(). All but idle() and answered() are emitted last, with the state
/// settled: a slot may call anything here, also destroy the channel.
class PLEXO_HOST_EXPORT RequestChannel : public QObject
{
    Q_OBJECT

public:
    enum Kind { Command, Query };
    enum Sending { FirstTime, Again };

    /// @p plugin owns the channel's timer.
    explicit RequestChannel(QObject *plugin);

    /// Runs while an answer is awaited. Repeats, but the channel stops it at each time-out that it handles.
    QTimer *timer() const { return m_timer; }
    int replyTimeout() const { return m_replyTimeoutMs; }
    /// In milliseconds; takes effect with the next request.
    void setReplyTimeout(int ms) { m_replyTimeoutMs = ms; }

    /// Another device than before empties the channel: what was meant for the earlier one, which the host may
    /// have deleted, would be waited for, and asked about, in the name of the next one.
    void setDevice(pxDevice *device);

    /// Requests of one action get a moment to arrive together before the first one leaves.
    void append(Kind kind, const PendingRequest &request);
    /// Sends the next request unless one is in flight. Without a device the request is dropped.
    void processNext();
    /// Sends the current request again. Does nothing without a device.
    void retry();
    /// An answer from the device: ends the request in flight and goes on with the next one.
    void receive(const QByteArray &answer);
    /// Drops every waiting request and forgets the one in flight.
    void clear();
    void dropQueries() { m_queues[Query].clear(); }

    /// Those in the queues, and the one in flight.
    int waitingRequests() const
    {
        return m_queues[Command].size() + m_queues[Query].size() + (isIdle() ? 0 : 1);
    }
    bool hasQueries() const { return !m_queues[Query].isEmpty(); }
    bool isBusy() const { return m_busy; }
    bool isQueryInFlight() const;
    /// The request sent last.
    const PendingRequest &current() const { return m_current; }

    /// Tells of a time-out, and of no other one until endTimeout().
    void handleTimeout();
    bool isTimeoutGuarded() const { return m_timeoutGuard; }
    /// No time-out is told any more, until another device is attached.
    void guardTimeout() { m_timeoutGuard = true; }
    /// Lets go of the request that timed out, or sends it @p again. Then its answer is awaited, but the next
    /// request need not wait for it: it counts as not in flight.
    void endTimeout(bool again);

signals:
    /// No command waits. Queries may be appended in a slot.
    void idle();
    void send(const QString &dev_name, pxDevice::e_dev_type type, const QByteArray &bytes,
              RequestChannel::Kind kind, RequestChannel::Sending sending);
    void dropped(const PendingRequest &request);
    /// What a slot does may let in further answers, as a message box does.
    void answered(const QByteArray &answer);
    void timedOut();

private:
    bool isIdle() const;
    void startSoon();
    void transmit(Sending sending);

    QTimer *m_timer;
    int m_replyTimeoutMs = 2000;
    QPointer<pxDevice> m_device;
    bool m_hadDevice = false;
    QVector<PendingRequest> m_queues[2]; // by Kind
    PendingRequest m_current;
    Kind m_currentKind = Command;
    int m_turn = 0; // another number as soon as a request was sent or all were cleared
    bool m_busy = false;
    bool m_timeoutGuard = false;
};
