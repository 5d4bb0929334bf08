#pragma once

#include <QRandomGenerator>

namespace sim {

/// The strength at which the phone is received, while its owner walks to the far end of the building and
/// back: from -50 dBm down to -130 dBm and up again, with some flutter.
class SignalWalk
{
public:
    explicit SignalWalk(quint32 seed)
        : m_random(seed)
    {
    }

    /// -130 to -50 dBm.
    int rssi() const { return m_rssi; }
    void advance(int ms);

private:
    QRandomGenerator m_random;
    int m_walked = 0; // ms since the walk began
    int m_rssi = -50;
};

} // namespace sim
