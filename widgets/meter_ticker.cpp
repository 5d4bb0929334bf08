#include "widgets/meter_ticker.h"

#include <algorithm>

namespace vm {

MeterTicker::MeterTicker()
{
    m_clock.start();
    m_timer.setInterval(interval);
    connect(&m_timer, &QTimer::timeout, this, &MeterTicker::tick);
}

void MeterTicker::add(Animated *meter)
{
    if (!m_moving.contains(meter))
        m_moving.append(meter);
    if (!m_timer.isActive())
        m_timer.start();
}

void MeterTicker::remove(Animated *meter)
{
    m_moving.removeOne(meter);
    if (m_moving.isEmpty())
        m_timer.stop();
}

void MeterTicker::tick()
{
    const qint64 time = now();
    const auto isStill = [time](Animated *meter) { return !meter->advanceTo(time); };
    m_moving.erase(std::remove_if(m_moving.begin(), m_moving.end(), isStill), m_moving.end());
    if (m_moving.isEmpty())
        m_timer.stop();
}

} // namespace vm
