#include "proof/soak.h"

#include "proof/agreement.h"
#include "proof/plugin_under_proof.h"

#include <QTest>
#include <QTextStream>

#include <algorithm>

namespace proof {

namespace {

constexpr int RestMs = 60000;
constexpr int CalmLooks = 10;
constexpr int CalmMs = 100;
constexpr double SceneShare = 1.01; // an editor's scene has some only once it was drawn

/// The figure of the looks from @p first to before @p end, in ascending order.
template <typename Figure>
QVector<double> ordered(const QList<Census> &looks, int first, int end, Figure figure)
{
    QVector<double> figures;
    for (int i = first; i < end; ++i)
        figures.append(double(looks.at(i).*figure));
    std::sort(figures.begin(), figures.end());
    return figures;
}

} // namespace

Soak::Soak(PlexoPluginFactory *factory, const SoakPlan &plan)
    : m_plan(plan)
    , m_dice(plan.seed)
{
    for (int number = 1; number <= plan.devices; ++number) {
        Place place;
        place.station = std::make_unique<Station>(factory, number, plan.seed + quint32(number));
        place.station->setHasty(number % 2 == 0);
        place.user = std::make_unique<RandomUser>(place.station.get(), plan.seed + quint32(number),
                                                  QStringLiteral(CUE_FOLDER "/def_pair_end.wav"));
        m_places.push_back(std::move(place));
    }
}

bool Soak::start()
{
    for (Place &place : m_places) {
        if (!place.station->start({}))
            return false;
    }
    return true;
}

QStringList Soak::run()
{
    if (!start())
        return {QStringLiteral("the simulated devices did not start")};
    for (int round = 0; round < m_plan.rounds && m_problems.isEmpty(); ++round) {
        work(round);
        if (rest())
            look(round);
        m_problems += takeWarnings();
    }
    if (m_problems.isEmpty())
        judge();
    return m_problems;
}

/// Everybody works; in every third round one device is lost for some seconds.
void Soak::work(int round)
{
    QTimer lose;
    lose.setSingleShot(true);
    const int ms = m_plan.minutes * 60000 / m_plan.rounds;
    Station *unlucky = m_places.at(m_dice.bounded(quint32(m_places.size()))).station.get();
    LinkFaults vanish;
    vanish.vanishAt = 1;
    vanish.returnAfterMs = m_dice.bounded(500, 4000);
    QObject::connect(&lose, &QTimer::timeout, &lose,
                     [unlucky, vanish] { unlucky->link()->setFaults(vanish); });
    if (round % 3 == 2)
        lose.start(ms / 2);
    for (Place &place : m_places)
        place.user->start(m_plan.pauseMs);
    QTest::qWait(ms);
    for (Place &place : m_places) {
        place.user->stop();
        place.station->link()->setFaults({});
    }
}

/// Waits until nobody waits for anything: all editors live, no box and no block window open.
bool Soak::rest()
{
    // An editor that was told to close goes a moment later, when others are looked at already.
    const auto isGone = [](const Place &place) { return !place.station->isOpen(); };
    do {
        for (Place &place : m_places)
            agree(place);
    } while (m_problems.isEmpty() && std::any_of(m_places.begin(), m_places.end(), isGone));
    return m_problems.isEmpty();
}

void Soak::agree(const Place &place)
{
    QStringList problems = Agreement(place.station.get(), place.user->draft()).reach(RestMs);
    problems += place.station->ledger()->problems();
    if (!problems.isEmpty())
        m_problems += QStringList{place.station->device().name()} + problems + place.user->trace();
}

void Soak::look(int round)
{
    // What only waits a moment to be done is none of what is kept.
    Census census = takeCensus();
    for (int i = 0; i < CalmLooks; ++i) {
        QTest::qWait(CalmMs);
        const Census next = takeCensus();
        if (next.objects <= census.objects)
            census = next;
    }
    m_looks.append(census);
    int acts = 0;
    int matched = 0;
    int opened = 0;
    for (const Place &place : m_places) {
        acts += place.user->acts();
        matched += place.station->ledger()->matched();
        opened += place.station->opened();
    }
    QTextStream(stdout) << QStringLiteral("round %1: %2 MiB, %3 objects, %4 timers, %5 descriptors, %6 acts, "
                                          "%7 messages as expected, %8 editors opened, loop up to %9 ms late")
                               .arg(round + 1)
                               .arg(census.residentMiB, 0, 'f', 1)
                               .arg(census.objects)
                               .arg(census.timers)
                               .arg(census.descriptors)
                               .arg(acts)
                               .arg(matched)
                               .arg(opened)
                               .arg(m_loop.worst(), 0, 'f', 0)
                        << Qt::endl;
    m_loop.forget();
}

void Soak::judge()
{
    const int quarter = m_looks.size() / 4;
    const int end = m_looks.size();
    if (quarter == 0)
        return;
    // Memory wavers about a middle. Of the others there are now and then more for a moment, never fewer.
    const auto compare = [&](const char *what, auto figure, int position, double most) {
        const double before = ordered(m_looks, quarter, 2 * quarter, figure).at(position);
        const double after = ordered(m_looks, end - quarter, end, figure).at(position);
        const bool good = after <= before * most;
        QTextStream(stdout) << QStringLiteral("%1: %2 in the second quarter, %3 in the last, %4")
                                   .arg(QLatin1String(what))
                                   .arg(before, 0, 'f', 1)
                                   .arg(after, 0, 'f', 1)
                                   .arg(good ? QStringLiteral("constant") : QStringLiteral("GROWS"))
                            << Qt::endl;
        if (!good)
            m_problems.append(QLatin1String(what) + QLatin1String(" grows"));
    };
    compare("memory in MiB", &Census::residentMiB, quarter / 2, m_plan.mostGrowth);
    compare("objects", &Census::objects, 0, SceneShare);
    compare("timers", &Census::timers, 0, m_plan.mostGrowth);
    compare("descriptors", &Census::descriptors, 0, m_plan.mostGrowth);
    if (!m_problems.isEmpty())
        compareClasses();
}

/// Which objects there are more of.
void Soak::compareClasses()
{
    const QMap<QString, int> &before = m_looks.at(m_looks.size() / 4).classes;
    const QMap<QString, int> &after = m_looks.last().classes;
    for (auto now = after.begin(); now != after.end(); ++now) {
        if (now.value() > before.value(now.key()))
            m_problems.append(QStringLiteral("%1: %2, then %3")
                                  .arg(now.key())
                                  .arg(before.value(now.key()))
                                  .arg(now.value()));
    }
}

} // namespace proof
