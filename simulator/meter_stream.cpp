#include "simulator/meter_stream.h"

namespace sim {

MeterStream::MeterStream(const Intervals &intervals, const std::function<LevelPacket()> &packet,
                         QObject *parent)
    : QObject(parent)
    , m_packet(packet)
    , m_streamForMs(intervals.meterFor)
{
    m_timer.setInterval(intervals.meter);
    m_timer.setTimerType(Qt::PreciseTimer);
    connect(&m_timer, &QTimer::timeout, this, &MeterStream::sendPacket);
}

void MeterStream::request()
{
    m_sinceRequest.start();
    if (!m_timer.isActive())
        m_timer.start();
}

void MeterStream::sendPacket()
{
    if (m_sinceRequest.hasExpired(m_streamForMs)) {
        stop();
        return;
    }
    const LevelPacket packet = m_packet();
    m_sender.send(packet.payload, packet.group, packet.port);
}

} // namespace sim
