#include "simulator/signal_walk.h"

#include <QtGlobal>

namespace sim {

namespace {

constexpr int nearDbm = -50;
constexpr int farDbm = -130;
constexpr int wayMs = 24000; // one way
constexpr int flutterDb = 2;

} // namespace

void SignalWalk::advance(int ms)
{
    m_walked = (m_walked + ms) % (2 * wayMs);
    const int distance = m_walked < wayMs ? m_walked : 2 * wayMs - m_walked;
    const int steady = nearDbm + (farDbm - nearDbm) * distance / wayMs;
    m_rssi = qBound(farDbm, steady + m_random.bounded(-flutterDb, flutterDb + 1), nearDbm);
}

} // namespace sim
