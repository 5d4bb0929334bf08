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

void RequestSide::takeCommand()
{
    m_current = m_commands.takeFirst();
    m_currentIsQuery = false;
}

void RequestSide::takeQuery()
{
    m_current = m_queries.takeFirst();
    m_currentIsQuery = true;
}

void RequestSide::markSent(int timeoutMs)
{
    busy = true;
    ++m_turn;
    m_timer->start(timeoutMs);
}

void RequestSide::clear()
{
    m_timer->stop();
    m_commands.clear();
    m_queries.clear();
    busy = false;
    ++m_turn;
}
