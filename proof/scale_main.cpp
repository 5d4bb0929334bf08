// What devices on the network and open editors cost, and whether that grows with their number only. Prints
// one table; the exit code tells whether every goal was met.

#include "benchmarks/report.h"
#include "devhost/host.h"
#include "devhost/host_window.h"
#include "devhost/options.h"
#include "devhost/window_memory.h"
#include "proof/announcers.h"
#include "proof/loop_watch.h"
#include "proof/object_census.h"
#include "proof/plugin_under_proof.h"
#include "proof/station.h"
#include "tests/support/loopback.h"

#include <QApplication>
#include <QProcess>
#include <QTest>
#include <QTextStream>

#include <ctime>
#include <memory>
#include <vector>

namespace {

constexpr int MeasureMs = 8000;
constexpr int LiveMs = 120000;
constexpr double MostLoopDelayMs = 50;
constexpr double MostFloodDelayMs = 200;
/// How much more each one may cost among many than among few.
constexpr double MostPerPiece = 1.5;

struct Cost
{
    int count = 0;
    double processor = 0; ///< per cent of one
    double residentMiB = 0;
    double delay99 = 0; ///< ms
    double delayWorst = 0;
};

Cost measure(int count, proof::LoopWatch &loop)
{
    loop.forget();
    QElapsedTimer clock;
    clock.start();
    const std::clock_t before = std::clock();
    QTest::qWait(MeasureMs);
    const double seconds = double(std::clock() - before) / CLOCKS_PER_SEC;
    return {count, seconds * 1e5 / double(clock.elapsed()), proof::takeCensus().residentMiB,
            loop.percentile(0.99), loop.worst()};
}

/// The development host with its window, hearing of whatever @p arguments have another process announce.
class Listening
{
public:
    explicit Listening(const QStringList &arguments)
        : m_memory(QString())
        , m_window(&m_host, &m_memory, QString())
    {
        devhost::Options options;
        options.plugins = QStringList{QStringLiteral(PLUGIN_FILE)};
        m_host.start(options, loopbackInterface());
        m_window.show();
        m_announcers.start(QCoreApplication::applicationFilePath(), arguments);
    }
    ~Listening()
    {
        m_announcers.kill();
        m_announcers.waitForFinished();
    }

    bool waitForDevices(int count)
    {
        return QTest::qWaitFor([&] { return m_host.finder()->devices().size() >= count; }, 30000);
    }

private:
    devhost::Host m_host;
    devhost::WindowMemory m_memory;
    devhost::HostWindow m_window;
    QProcess m_announcers;
};

void addRows(bench::Report &report, const QString &what, const QVector<Cost> &costs)
{
    for (const Cost &cost : costs) {
        const QString name = QStringLiteral("%1 %2: ").arg(cost.count).arg(what);
        report.add(name + QStringLiteral("processor"), cost.processor, QStringLiteral("%"));
        report.add(name + QStringLiteral("memory"), cost.residentMiB, QStringLiteral("MiB"));
        report.add(name + QStringLiteral("event loop, 99 of 100 within"), cost.delay99, QStringLiteral("ms"));
    }
    // What one more costs towards the end, against what it costs up to the third.
    const auto growth = [&costs](double Cost::*figure) {
        const auto slope = [figure](const Cost &from, const Cost &to) {
            return (to.*figure - from.*figure) / (to.count - from.count);
        };
        return slope(costs.at(2), costs.at(3)) / slope(costs.at(0), costs.at(2));
    };
    report.addAtMost(QStringLiteral("one more of many %1 to one more of few: processor").arg(what),
                     growth(&Cost::processor), QString(), MostPerPiece);
    report.addAtMost(QStringLiteral("one more of many %1 to one more of few: memory").arg(what),
                     growth(&Cost::residentMiB), QString(), MostPerPiece);
    report.addAtMost(QStringLiteral("%1 %2: event loop, 99 of 100 within").arg(costs.last().count).arg(what),
                     costs.last().delay99, QStringLiteral("ms"), MostLoopDelayMs);
}

bool measureDevices(bench::Report &report, proof::LoopWatch &loop)
{
    QVector<Cost> costs;
    for (int count : {1, 10, 50, 200}) {
        Listening host({QStringLiteral("--announce"), QString::number(count)});
        if (!host.waitForDevices(count))
            return false;
        costs.append(measure(count, loop));
    }
    addRows(report, QStringLiteral("announced devices"), costs);
    return true;
}

bool measureFlood(bench::Report &report, proof::LoopWatch &loop)
{
    Listening host({QStringLiteral("--flood")});
    if (!host.waitForDevices(1))
        return false;
    report.addAtMost(QStringLiteral("10,000 new names a second: event loop at most late"),
                     measure(0, loop).delayWorst, QStringLiteral("ms"), MostFloodDelayMs);
    return true;
}

/// Live editors with all their block windows, of devices that send levels.
bool measureEditors(bench::Report &report, proof::LoopWatch &loop)
{
    PlexoPluginFactory *factory = proof::loadPlugin(); // not before: a host that ends unloads it
    std::vector<std::unique_ptr<proof::Station>> stations;
    QVector<Cost> costs;
    for (int count : {1, 5, 10, 20}) {
        while (int(stations.size()) < count) {
            stations.push_back(std::make_unique<proof::Station>(factory, int(stations.size()) + 1, 1));
            if (!stations.back()->start({}))
                return false;
            stations.back()->open();
            if (!QTest::qWaitFor([&] { return stations.back()->isLive(); }, LiveMs))
                return false;
            stations.back()->openBlocks();
        }
        costs.append(measure(count, loop));
    }
    addRows(report, QStringLiteral("editors"), costs);
    return true;
}

} // namespace

int main(int argc, char *argv[])
{
    QApplication application(argc, argv);
    const QStringList arguments = QApplication::arguments();
    if (arguments.value(1) == QLatin1String("--announce"))
        return proof::announce(qMax(1, arguments.value(2).toInt()), loopbackInterface());
    if (arguments.value(1) == QLatin1String("--flood"))
        return proof::flood(loopbackInterface());
    bench::Report report;
    {
        proof::LoopWatch loop;
        const bool done
            = measureDevices(report, loop) && measureFlood(report, loop) && measureEditors(report, loop);
        report.print();
        if (!done) {
            QTextStream(stderr) << "Devices or editors did not come up; what follows them is missing."
                                << Qt::endl;
            return 1;
        }
    }
    return report.allGoalsMet() ? 0 : 1;
}
