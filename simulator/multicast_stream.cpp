#include "simulator/multicast_stream.h"

namespace sim {

MulticastStream::MulticastStream(int intervalMs, const std::function<Packet()> &packet, QObject *parent)
    : QObject(parent)
    , m_packet(packet)
{
    m_timer.setInterval(intervalMs);
    m_timer.setTimerType(Qt::PreciseTimer);
    connect(&m_timer, &QTimer::timeout, this, &MulticastStream::sendDue);
}

bool MulticastStream::open(const Station &station)
{
    if (!m_socket.bind(station.address, 0))
        return false;
    m_socket.setMulticastInterface(station.interface);
    return true;
}

void MulticastStream::start(qint64 ms)
{
    m_lastsMs = ms;
    m_sinceStart.start();
    if (!m_timer.isActive())
        m_timer.start();
}

void MulticastStream::sendNow()
{
    const Packet packet = m_packet();
    m_socket.writeDatagram(packet.payload, packet.group, packet.port);
}

void MulticastStream::sendDue()
{
    if (m_lastsMs >= 0 && m_sinceStart.hasExpired(m_lastsMs))
        stop();
    else
        sendNow();
}

} // namespace sim
