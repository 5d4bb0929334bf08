#include "proof/fault_run.h"

#include "proof/agreement.h"
#include "proof/answers.h"
#include "proof/loop_watch.h"
#include "proof/random_user.h"
#include "proof/station.h"

#include <QAbstractButton>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTest>

namespace proof {

namespace {

// Everything that has to do with time-outs runs at ten times its pace: a request is overdue after 200 ms
// instead of 2 s, and replies come up to 250 ms late instead of 2.5 s.
constexpr int ReplyTimeoutMs = 200;
constexpr int UsualTimeoutMs = 2000; // where nothing may time out
constexpr int LongestLatencyMs = 250;
constexpr int GentleLatencyMs = 25; // the polls must leave room between them
constexpr int GentleRounds = 5;
constexpr int PauseMs = 15; // between two acts of the user
constexpr int PatientPauseMs = 40; // until an act has become a message
constexpr int RequestsOfAQuery = 35;
constexpr int LoopDelayMs = 1000;
constexpr int SettleMs = 20000;
constexpr int ActMs = 40000;
constexpr int AgreeMs = 40000;
constexpr int LeaveMs = 10000;

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
    void act(int acts);
    void agree(bool refreshing);
    void leave();
    void leaveByButton();
    void resetDevice();
    void click(const char *button);
    QJsonObject settings() const;
    void fail(const QString &problem);

    FaultPlan m_plan;
    double m_patience;
    Station m_station;
    RandomUser m_user;
    LoopWatch m_loop;
    QTimer m_boxes;
    QTimer m_census; ///< of boxes
    QJsonObject m_factory;
    QStringList m_problems;
};

FaultRun::FaultRun(PlexoPluginFactory *factory, const FaultPlan &plan, double patience)
    : m_plan(plan)
    , m_patience(patience)
    , m_station(factory, 1, plan.seed)
    , m_user(&m_station, plan.seed, QStringLiteral(CUE_FOLDER "/def_pair_end.wav"))
{
    m_station.setReplyTimeout(int((plan.gentle ? UsualTimeoutMs : ReplyTimeoutMs) * patience));
    m_station.setHasty(plan.hastyHost);
    m_user.setPatient(plan.gentle);
    m_station.setFirmware(plan.firmware);
    QObject::connect(&m_boxes, &QTimer::timeout, &m_boxes, &answerOpenBox);
    QObject::connect(&m_census, &QTimer::timeout, &m_census, [this] {
        for (const QString &problem : doubledBoxes())
            m_station.ledger()->complain(problem);
    });
}

void FaultRun::fail(const QString &problem)
{
    m_problems.append(problem);
}

QStringList FaultRun::run()
{
    if (!m_station.start({QStringLiteral("--seed"), QString::number(m_plan.seed)}))
        return {QStringLiteral("the simulated device did not start")};
    m_factory = settings();
    if (m_plan.seed % 2 == 0)
        m_station.process().set(QStringLiteral("/system/bluetooth/name"), QStringLiteral("B\u00fcro \u266b"));
    m_census.start(50);
    misbehave();
    if (m_problems.isEmpty())
        agree(true);
    leave();
    m_problems += m_station.ledger()->problems();
    m_boxes.start(5); // what still opens while the editor goes
    m_station.close();
    if (!m_problems.isEmpty())
        m_problems += QStringList{QStringLiteral("what the user did last:")} + m_user.trace();
    return m_problems;
}

/// Until the user has done so much.
void FaultRun::act(int acts)
{
    m_loop.forget(); // questions to the device itself hold it up, too
    m_user.start(m_plan.gentle ? PatientPauseMs : PauseMs);
    waitFor(ActMs, [&] { return m_user.acts() >= acts; });
    m_user.stop();
    if (m_loop.worst() > LoopDelayMs * m_patience)
        fail(QStringLiteral("the event loop was held up for %1 ms").arg(m_loop.worst(), 0, 'f', 0));
}

void FaultRun::agree(bool refreshing)
{
    Agreement agreement(&m_station, m_user.draft());
    agreement.setWithBlocks(true);
    agreement.setRefreshing(refreshing);
    const QStringList obstacles = agreement.reach(int(AgreeMs * m_patience));
    if (!obstacles.isEmpty() && !refreshing)
        fail(QStringLiteral("without Refresh:"));
    m_problems += obstacles;
}

void FaultRun::leave()
{
    if (!m_problems.isEmpty() || m_plan.leaving == FaultPlan::JustGo)
        return;
    m_boxes.start(5);
    if (m_plan.leaving == FaultPlan::CloseButton)
        leaveByButton();
    else
        resetDevice();
    if (!waitFor(LeaveMs, [this] { return !m_station.isOpen(); }))
        fail(QStringLiteral("the editor does not ask its host to close"));
    m_boxes.stop();
}

void FaultRun::click(const char *button)
{
    QWidget *widget = m_station.editor()->findChild<QWidget *>(QLatin1String(button));
    QTest::mouseClick(widget, Qt::LeftButton, {}, {8, widget->height() / 2});
}

void FaultRun::leaveByButton()
{
    const auto *identify
        = m_station.editor()->findChild<QAbstractButton *>(QStringLiteral("identify_checkBox"));
    if (!identify->isChecked())
        click("identify_checkBox");
    waitFor(SettleMs, [this] { return m_station.isIdle(); });
    click("close_pushButton");
    if (m_station.isOpen() && identify->isChecked())
        fail(QStringLiteral("Identify stays on when the editor is closed"));
    waitFor(LeaveMs, [this] { return !m_station.isOpen(); });
    if (m_station.ledger()->lastSent(QStringLiteral("/control/identify")) != QJsonValue(false))
        fail(QStringLiteral("the device is left identifying itself"));
}

void FaultRun::resetDevice()
{
    click("factory_reset_pushButton");
    if (m_station.isOpen()
        && m_station.editor()->findChild<QWidget *>(QStringLiteral("plugin_frame"))->isEnabled())
        fail(QStringLiteral("the pages can be used while the device is reset"));
    waitFor(LeaveMs, [this] { return !m_station.isOpen(); });
    const QJsonObject now = settings();
    for (auto part = m_factory.begin(); part != m_factory.end(); ++part) {
        if (now.value(part.key()) != part.value())
            fail(part.key() + QLatin1String(" is not as it came from the factory: ")
                 + QString::fromUtf8(QJsonDocument(QJsonObject{{part.key(), now.value(part.key())}})
                                         .toJson(QJsonDocument::Compact)));
    }
}

/// What a factory reset restores.
QJsonObject FaultRun::settings() const
{
    QJsonObject settings;
    for (const QString &path :
         {QStringLiteral("/system"), QStringLiteral("/preset"), QStringLiteral("/status/bluetooth/list")})
        settings.insert(path, m_station.process().ask(path));
    return settings;
}

void FaultRun::misbehave()
{
    if (!m_plan.fromTheStart) {
        m_station.open();
        if (!waitFor(SettleMs, [this] { return m_station.isLive(); }))
            fail(QStringLiteral("the editor does not become live without faults"));
    }
    m_station.link()->setFaults(m_plan.faults);
    // Where nothing is lost, what is shown is looked at now and then: later acts may hide what was wrong.
    const int rounds = m_plan.gentle ? GentleRounds : 1;
    for (int round = 1; round <= rounds && m_problems.isEmpty(); ++round) {
        act(m_plan.acts * round / rounds);
        if (m_plan.gentle)
            agree(false);
    }
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
    plan.acts = dice.bounded(120, 360);
    plan.firmware = dice.bounded(2) == 0 ? QStringLiteral("1.0.0")
                                         : QStringLiteral("1.2.0"); // the first is the oldest that fits
    plan.leaving = FaultPlan::Leaving(dice.bounded(3));
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
    if (seed % 3 == 1) {
        plan.gentle = true;
        plan.acts /= 2; // it takes longer to wait for the device
        plan.faults = LinkFaults();
        plan.faults.latencyMs = dice.bounded(GentleLatencyMs);
        plan.faults.jitterMs = dice.bounded(GentleLatencyMs);
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
