#include "host/request_channel.h"

#include <QTimer>

RequestChannel::RequestChannel(QObject *plugin)
    : QObject(plugin)
    , m_timer(new QTimer(plugin))
{
}

bool RequestChannel::isIdle() const
{
    return !m_busy && !m_timer->isActive();
}

bool RequestChannel::isQueryInFlight() const
{
    return m_currentKind == Query && !isIdle();
}

void RequestChannel::setDevice(pxDevice *device)
{
    if (m_device == device)
        return;
    // Before the first device, nothing can have been meant for another one.
    if (m_hadDevice)
        clear();
    m_hadDevice = true;
    m_device = device;
    m_timeoutGuard = false;
}

void RequestChannel::startSoon()
{
    constexpr int StartDelayMs = 5;
    QTimer::singleShot(StartDelayMs, this, &RequestChannel::processNext);
}

void RequestChannel::append(Kind kind, const PendingRequest &request)
{
    const bool isFirst = isIdle() && m_queues[Command].isEmpty() && m_queues[Query].isEmpty();
    m_queues[kind].append(request);
    if (isFirst)
        startSoon();
}

void RequestChannel::processNext()
{
    if (m_busy)
        return;
    const Kind kind = m_queues[Command].isEmpty() ? Query : Command;
    if (kind == Query) {
        const QPointer<RequestChannel> alive(this);
        emit idle();
        // A slot may have started a request itself.
        if (!alive || m_busy || !hasQueries())
            return;
    }
    m_current = m_queues[kind].takeFirst();
    m_currentKind = kind;
    if (m_device) {
        m_busy = true;
        transmit(FirstTime);
    } else {
        // One by one, so that the channel is usable as soon as a device is attached.
        startSoon();
        emit dropped(PendingRequest(m_current));
    }
}

void RequestChannel::transmit(Sending sending)
{
    ++m_turn;
    m_timer->start(m_replyTimeoutMs);
    const PendingRequest request = m_current; // the slots may make another one current
    emit send(request.dev_name, m_device->type(), request.bytes, m_currentKind, sending);
}

void RequestChannel::retry()
{
    if (!m_device)
        return;
    m_busy = true;
    transmit(Again);
}

void RequestChannel::receive(const QByteArray &answer)
{
    const QPointer<RequestChannel> alive(this);
    m_timer->stop();
    const int turn = m_turn;
    emit answered(answer);
    // Further answers may have ended this request, or another device was attached.
    if (!alive || m_turn != turn)
        return;
    m_busy = false;
    processNext();
}

void RequestChannel::clear()
{
    m_timer->stop();
    m_queues[Command].clear();
    m_queues[Query].clear();
    m_busy = false;
    ++m_turn;
}

void RequestChannel::handleTimeout()
{
    if (m_timeoutGuard)
        return;
    m_timer->stop();
    m_timeoutGuard = true;
    emit timedOut();
}

void RequestChannel::endTimeout(bool again)
{
    m_busy = false;
    m_timeoutGuard = false;
    if (again && m_device)
        transmit(Again);
}
