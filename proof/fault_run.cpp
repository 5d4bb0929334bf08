#include "proof/fault_run.h"

#include "proof/agreement.h"
#include "proof/answers.h"
#include "proof/loop_watch.h"
#include "proof/random_user.h"
#include "proof/station.h"

#include <QTest>

namespace proof {

namespace {

// Everything that has to do with time-outs runs at ten times its pace: a request is overdue after 200 ms
// instead of 2 s, and replies come up to 250 ms late instead of 2.5 s.
constexpr int ReplyTimeoutMs = 200;
constexpr int LongestLatencyMs = 250;
constexpr int RequestsOfAQuery = 35;
constexpr int LoopDelayMs = 1000;
constexpr int SettleMs = 20000;
constexpr int AgreeMs = 40000;

/// One seed's run, from the start of the device to the verdict.
class FaultRun
{
public:
    FaultRun(PlexoPluginFactory *factory, const FaultPlan &plan, double patience);

    QStringList run();

private:
    bool waitFor(int ms, const std::function<bool()> &condition) const
    {
        return QTest::qWaitFor(condition, int(ms * m_patience));
    }
    void misbehave();
    void fail(const QString &problem);

    FaultPlan m_plan;
    double m_patience;
    Station m_station;
    RandomUser m_user;
    LoopWatch m_loop;
    QTimer m_boxes;
    QStringList m_problems;
};

FaultRun::FaultRun(PlexoPluginFactory *factory, const FaultPlan &plan, double patience)
    : m_plan(plan)
    , m_patience(patience)
    , m_station(factory, 1, plan.seed)
    , m_user(&m_station, plan.seed, QStringLiteral(CUE_FOLDER "/def_pair_end.wav"))
{
    m_station.setReplyTimeout(int(ReplyTimeoutMs * patience));
    m_station.setHasty(plan.hastyHost);
    QObject::connect(&m_boxes, &QTimer::timeout, &m_boxes, &answerOpenBox);
}

void FaultRun::fail(const QString &problem)
{
    m_problems.append(problem);
}

QStringList FaultRun::run()
{
    if (!m_station.start({QStringLiteral("--seed"), QString::number(m_plan.seed)}))
        return {QStringLiteral("the simulated device did not start")};
    misbehave();
    Agreement agreement(&m_station, m_user.draft());
    agreement.setWithBlocks(true);
    m_problems += agreement.reach(int(AgreeMs * m_patience));
    if (m_loop.worst() > LoopDelayMs * m_patience)
        fail(QStringLiteral("the event loop was held up for %1 ms").arg(m_loop.worst(), 0, 'f', 0));
    m_problems += m_station.ledger()->problems();
    m_boxes.start(5); // what still opens while the editor goes
    m_station.close();
    if (!m_problems.isEmpty())
        m_problems += QStringList{QStringLiteral("what the user did last:")} + m_user.trace();
    return m_problems;
}

void FaultRun::misbehave()
{
    if (!m_plan.fromTheStart) {
        m_station.open();
        if (!waitFor(SettleMs, [this] { return m_station.isLive(); }))
            fail(QStringLiteral("the editor does not become live without faults"));
    }
    m_station.link()->setFaults(m_plan.faults);
    m_user.start(15);
    waitFor(SettleMs, [this] { return m_user.acts() >= m_plan.acts; });
    m_user.stop();
    LinkFaults none;
    m_station.link()->setFaults(none);
}

} // namespace

FaultPlan planOf(quint32 seed)
{
    QRandomGenerator dice(seed);
    const auto sometimes = [&dice](double most) {
        const double share = dice.generateDouble() * most;
        return dice.bounded(2) == 0 ? 0.0 : share;
    };
    FaultPlan plan;
    plan.seed = seed;
    plan.acts = dice.bounded(60, 160);
    plan.fromTheStart = dice.bounded(3) == 0;
    plan.hastyHost = dice.bounded(2) == 0;
    plan.faults.latencyMs = dice.bounded(3) == 0 ? dice.bounded(LongestLatencyMs) : 0;
    plan.faults.jitterMs = dice.bounded(3) == 0 ? dice.bounded(LongestLatencyMs / 2) : 0;
    plan.faults.drop = sometimes(0.1);
    plan.faults.duplicate = sometimes(0.2);
    plan.faults.overtake = sometimes(0.1);
    plan.faults.overtakenMs = ReplyTimeoutMs + dice.bounded(ReplyTimeoutMs);
    plan.faults.garbage = sometimes(0.2);
    plan.faults.refuse = sometimes(0.3);
    if (seed % 3 == 0) {
        // With consecutive seeds each request of the first query has its turn.
        plan.fromTheStart = true;
        plan.faults.vanishAt = int(seed / 3) % RequestsOfAQuery + 1;
        plan.faults.returnAfterMs = dice.bounded(50, 600);
    }
    return plan;
}

QString FaultPlan::text() const
{
    return QStringLiteral(
               "seed %1: %2 acts, faults from the %3, latency %4+%5 ms, drop %6, duplicate %7, overtake %8, "
               "garbage %9, ")
               .arg(seed)
               .arg(acts)
               .arg(fromTheStart ? QStringLiteral("start") : QStringLiteral("live editor on"))
               .arg(faults.latencyMs)
               .arg(faults.jitterMs)
               .arg(faults.drop, 0, 'f', 2)
               .arg(faults.duplicate, 0, 'f', 2)
               .arg(faults.overtake, 0, 'f', 2)
               .arg(faults.garbage, 0, 'f', 2)
        + QStringLiteral("refuse %1, vanish at request %2%3")
              .arg(faults.refuse, 0, 'f', 2)
              .arg(faults.vanishAt)
              .arg(hastyHost ? QStringLiteral(", hasty host") : QString());
}

QStringList runWithFaults(PlexoPluginFactory *factory, const FaultPlan &plan, double patience)
{
    return FaultRun(factory, plan, patience).run();
}

} // namespace proof
