#include "host/request_side.h"

#include <QTimer>

bool RequestSide::isIdle() const
{
    return !busy && !m_timer->isActive();
}

bool RequestSide::appendCommand(const PendingRequest &request)
{
    m_commands.append(request);
    return isIdle() && m_commands.size() == 1 && m_queries.isEmpty();
}

bool RequestSide::appendQuery(const PendingRequest &request)
{
    m_queries.append(request);
    return isIdle() && m_queries.size() == 1 && m_commands.isEmpty();
}

bool RequestSide::takeNext()
{
    if (m_commands.isEmpty() && m_queries.isEmpty())
        return false;
    m_currentIsQuery = m_commands.isEmpty();
    m_current = m_currentIsQuery ? m_queries.takeFirst() : m_commands.takeFirst();
    return true;
}

void RequestSide::markSent(int timeoutMs)
{
    busy = true;
    m_timer->start(timeoutMs);
}

void RequestSide::clear()
{
    m_timer->stop();
    m_commands.clear();
    m_queries.clear();
    busy = false;
}
