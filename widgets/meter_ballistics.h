#pragma once

#include "widgets/level_taper.h"

#include <QtGlobal>

namespace vm {

/// How a meter moves between the levels that it is given. Times are milliseconds of any steady clock that
/// does not run backwards; levels are dB, and vm::lowestLevel is an empty meter.
class MeterBallistics
{
public:
    static constexpr double fallPerSecond = 11.8; ///< dB
    static constexpr qint64 peakHold = 1500; ///< ms
    static constexpr qint64 silence = 500; ///< ms without a level after which the meter is empty
    static constexpr double clipLevel = 0.0; ///< dB, from here on a maximum counts as clipped

    /// A level arrived: the bar jumps up to it at once, or falls towards it.
    void arrive(double dB, qint64 now);
    void advance(qint64 now);
    void clearMaximum() { m_maximum = lowestLevel; }

    double bar() const { return m_bar; }
    double peak() const { return m_peak; }
    /// The loudest level since it was last cleared; vm::lowestLevel when there was none.
    double maximum() const { return m_maximum; }
    bool isClipped() const { return m_maximum >= clipLevel; }
    /// True while the passing of time alone can change something.
    bool isMoving() const { return m_bar > lowestLevel || m_peak > lowestLevel; }

private:
    double m_target = lowestLevel;
    double m_bar = lowestLevel;
    double m_peak = lowestLevel;
    double m_maximum = lowestLevel;
    qint64 m_now = 0;
    qint64 m_arrived = 0;
    qint64 m_peakSince = 0;
};

} // namespace vm
