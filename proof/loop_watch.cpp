#include "proof/loop_watch.h"

#include <algorithm>
#include <csignal>
#include <unistd.h>

namespace proof {

namespace {

constexpr int BeatMs = 10;
constexpr unsigned StandstillSeconds = 60;

void endAfterStandstill(int)
{
    constexpr char text[] = "The event loop stands still.\n";
    if (write(STDERR_FILENO, text, sizeof text - 1) < 0)
        _exit(3);
    std::signal(SIGABRT, SIG_DFL);
    std::abort();
}

} // namespace

LoopWatch::LoopWatch(QObject *parent)
    : QObject(parent)
    , m_schedule(QStringLiteral("/proc/thread-self/schedstat"))
{
    // Without it, what others take of the processor counts as well.
    m_schedule.open(QIODevice::ReadOnly | QIODevice::Unbuffered);
    m_waited = waitedForProcessor();
    std::signal(SIGALRM, endAfterStandstill);
    m_timer.setTimerType(Qt::PreciseTimer);
    connect(&m_timer, &QTimer::timeout, this, &LoopWatch::beat);
    m_timer.start(BeatMs);
    m_sinceBeat.start();
}

LoopWatch::~LoopWatch()
{
    alarm(0);
}

/// In ns since the thread began.
qint64 LoopWatch::waitedForProcessor()
{
    m_schedule.seek(0);
    return m_schedule.read(100).split(' ').value(1).toLongLong();
}

void LoopWatch::beat()
{
    alarm(StandstillSeconds);
    const qint64 waited = waitedForProcessor();
    const double late = double(m_sinceBeat.nsecsElapsed() - (waited - m_waited)) / 1e6 - BeatMs;
    m_delays.append(float(std::max(0.0, late)));
    m_waited = waited;
    m_sinceBeat.restart();
}

double LoopWatch::percentile(double share) const
{
    if (m_delays.isEmpty())
        return 0;
    QVector<float> sorted = m_delays;
    const auto nth = sorted.begin() + qMin(sorted.size() - 1, int(share * sorted.size()));
    std::nth_element(sorted.begin(), nth, sorted.end());
    return double(*nth);
}

} // namespace proof
