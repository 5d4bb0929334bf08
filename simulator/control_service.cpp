#include "simulator/control_service.h"

#include <QNetworkDatagram>

#include <utility>

namespace sim {

ControlService::ControlService(quint32 seed, int holdMs, const Answerer &answer, QObject *parent)
    : QObject(parent)
    , m_faults(FaultSettings(), seed)
    , m_answer(answer)
{
    m_holdTimer.setInterval(holdMs);
    m_holdTimer.setSingleShot(true);
    connect(&m_holdTimer, &QTimer::timeout, this, &ControlService::releaseHeld);
    connect(&m_socket, &QUdpSocket::readyRead, this, &ControlService::readRequests);
}

bool ControlService::listen(const QHostAddress &address, quint16 port)
{
    return m_socket.bind(address, port, QAbstractSocket::DontShareAddress);
}

void ControlService::setSilent(bool silent)
{
    m_silent = silent;
    if (!silent)
        return;
    ++m_silences;
    m_holdTimer.stop();
    m_held.reset();
}

void ControlService::readRequests()
{
    while (m_socket.hasPendingDatagrams()) {
        const QNetworkDatagram datagram = m_socket.receiveDatagram();
        if (!m_silent)
            serve(datagram.data(), datagram.senderAddress(), quint16(datagram.senderPort()));
    }
}

void ControlService::serve(const QByteArray &request, const QHostAddress &address, quint16 port)
{
    const Fate fate = m_faults.next();
    if (fate.loseRequest)
        return;
    for (const Answer &answer : m_answer(request)) {
        Reply reply{fate.garbage ? m_faults.garbage() : answer.bytes, address, port, fate};
        reply.fate.delayMs += answer.afterMs;
        if (!fate.loseReply)
            delay(reply);
    }
    emit answered();
}

void ControlService::delay(const Reply &reply)
{
    if (reply.fate.delayMs == 0) {
        dispatch(reply);
        return;
    }
    QTimer::singleShot(reply.fate.delayMs, Qt::PreciseTimer, this, [this, reply, silences = m_silences] {
        if (silences == m_silences)
            dispatch(reply);
    });
}

void ControlService::dispatch(const Reply &reply)
{
    if (reply.fate.reorder && !m_held) {
        m_held = reply;
        m_holdTimer.start();
        return;
    }
    transmit(reply);
    releaseHeld();
}

void ControlService::transmit(const Reply &reply)
{
    m_socket.writeDatagram(reply.bytes, reply.address, reply.port);
    if (reply.fate.duplicate)
        m_socket.writeDatagram(reply.bytes, reply.address, reply.port);
}

void ControlService::releaseHeld()
{
    m_holdTimer.stop();
    if (const std::optional<Reply> held = std::exchange(m_held, std::nullopt))
        transmit(*held);
}

} // namespace sim
