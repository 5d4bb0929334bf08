// From attaching a device to a live editor, and what one more editor costs.

#include "benchmarks/report.h"
#include "host/plexo_plugin_factory.h"
#include "tests/support/editor_session.h"

#include <QFile>
#include <QPluginLoader>

#include <memory>
#include <unistd.h>

namespace bench {

namespace {

constexpr int Runs = 9;

double residentKiB()
{
    QFile file(QStringLiteral("/proc/self/statm"));
    if (!file.open(QIODevice::ReadOnly))
        return 0;
    return file.readAll().split(' ').value(1).toDouble() * double(sysconf(_SC_PAGESIZE)) / 1024.0;
}

PlexoPluginFactory *load(Report &report)
{
    static QPluginLoader loader(QStringLiteral(PLUGIN_FILE));
    QElapsedTimer timer;
    timer.start();
    auto *factory = qobject_cast<PlexoPluginFactory *>(loader.instance());
    if (!factory)
        qFatal("%s", qPrintable(loader.errorString()));
    report.add(QStringLiteral("loading the plugin library, once"), double(timer.nsecsElapsed()) / 1e6,
               QStringLiteral("ms"));
    return factory;
}

void measureOpenToLive(Report &report, PlexoPluginFactory *factory)
{
    QVector<double> total;
    QVector<double> roundTrips;
    for (int run = 0; run < Runs; ++run) {
        support::EditorSession session(factory);
        QElapsedTimer timer;
        double lastReply = 0;
        QObject::connect(session.plugin.data(), &PlexoPlugin::updateGuiData, [&] {
            if (session.script->sent().size() == 35 && lastReply == 0)
                lastReply = double(timer.nsecsElapsed()) / 1e6;
        });
        timer.start();
        session.goLive();
        total.append(double(timer.nsecsElapsed()) / 1e6);
        roundTrips.append(lastReply);
    }
    report.add(QStringLiteral("open to live, device without latency"), median(total), QStringLiteral("ms"));
    report.add(QStringLiteral("  of this: 35 round trips and showing the window"), median(roundTrips),
               QStringLiteral("ms"));
    report.add(QStringLiteral("  of this: waiting for the next look at the mixer"),
               median(total) - median(roundTrips), QStringLiteral("ms"));
}

void measureMemory(Report &report, PlexoPluginFactory *factory)
{
    std::vector<std::unique_ptr<support::EditorSession>> sessions;
    QVector<double> growth;
    for (int run = 0; run < Runs; ++run) {
        const double before = residentKiB();
        sessions.push_back(std::make_unique<support::EditorSession>(factory));
        sessions.back()->goLive();
        growth.append(residentKiB() - before);
    }
    report.add(QStringLiteral("resident memory of one more open editor"), median(growth),
               QStringLiteral("KiB"));
}

} // namespace

void measureOpening(Report &report)
{
    PlexoPluginFactory *factory = load(report);
    report.add(QStringLiteral("createPlugin()"),
               medianMicroseconds(Runs, [factory] { delete factory->createPlugin(nullptr); }) / 1000.0,
               QStringLiteral("ms"));
    measureOpenToLive(report, factory);
    measureMemory(report, factory);
}

} // namespace bench
