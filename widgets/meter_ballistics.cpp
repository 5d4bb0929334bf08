#include "widgets/meter_ballistics.h"

#include <algorithm>

namespace vm {

namespace {

double fall(qint64 milliseconds)
{
    return MeterBallistics::fallPerSecond * double(milliseconds) / 1000.0;
}

} // namespace

void MeterBallistics::arrive(double dB, qint64 now)
{
    advance(now);
    m_target = std::max(dB, lowestLevel);
    m_arrived = now;
    m_bar = std::max(m_bar, m_target);
    if (m_target >= m_peak) {
        m_peak = m_target;
        m_peakSince = now;
    }
    m_maximum = std::max(m_maximum, m_target);
}

void MeterBallistics::advance(qint64 now)
{
    const qint64 before = m_now;
    m_now = now;
    if (now - m_arrived >= silence) {
        m_target = m_bar = m_peak = lowestLevel;
        return;
    }
    m_bar = std::max(m_target, m_bar - fall(now - before));
    const qint64 released = std::max(before, m_peakSince + peakHold);
    if (now > released)
        m_peak = std::max(m_bar, m_peak - fall(now - released));
}

} // namespace vm
