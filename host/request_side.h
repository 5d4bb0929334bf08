#pragma once

#include "host/plexo_host_export.h"

#include <QByteArray>
#include <QString>
#include <QVector>

class QTimer;

/// One message on its way to a device.
struct PendingRequest
{
    QString dev_name; ///< the name by which the host routes it
    QByteArray bytes; ///< exactly as sent
};

/// The state of one side of the request channel: two first-in-first-out queues, commands before queries,
/// and at most one request in flight. It sends nothing itself.
class PLEXO_HOST_EXPORT RequestSide
{
public:
    /// @p timer is the side's reply time-out, not owned.
    explicit RequestSide(QTimer *timer)
        : m_timer(timer)
    {
    }

    QTimer *timer() const { return m_timer; }

    /// Each answers whether the caller has to start processing: true for the first request of an idle side.
    bool appendCommand(const PendingRequest &request);
    bool appendQuery(const PendingRequest &request);

    bool hasCommands() const { return !m_commands.isEmpty(); }
    bool hasQueries() const { return !m_queries.isEmpty(); }

    /// Each makes the first request of its queue, which must not be empty, the current one.
    void takeCommand();
    void takeQuery();
    const PendingRequest &current() const { return m_current; }
    bool currentIsQuery() const { return m_currentIsQuery; }

    /// Marks the current request as in flight and arms the time-out.
    void markSent(int timeoutMs);
    /// Drops every waiting request and forgets the one in flight.
    void clear();
    void dropQueries() { m_queries.clear(); }
    bool isQueryInFlight() const { return m_currentIsQuery && !isIdle(); }

    /// Another number as soon as a request was sent or all were cleared.
    int turn() const { return m_turn; }

    bool busy = false; ///< a request is in flight
    bool timeoutGuard = false; ///< a time-out or the loss of the device is being handled

private:
    bool isIdle() const;

    QTimer *m_timer;
    QVector<PendingRequest> m_commands;
    QVector<PendingRequest> m_queries;
    PendingRequest m_current;
    bool m_currentIsQuery = false;
    int m_turn = 0;
};
