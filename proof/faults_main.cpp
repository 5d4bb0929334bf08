// Runs seeds of faults, each in a process of its own, so that one that crashes does not hide the next.

#include "proof/fault_run.h"
#include "proof/plugin_under_proof.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QElapsedTimer>
#include <QProcess>
#include <QTextStream>

#include <cstdio>

namespace {

constexpr int LongestSeedMs = 300000;

void print(const QString &line)
{
    QTextStream(stdout) << line << Qt::endl;
}

int runSeed(quint32 seed, double patience)
{
    PlexoPluginFactory *factory = proof::loadPlugin();
    const proof::FaultPlan plan = proof::planOf(seed);
    print(plan.text());
    const QStringList problems = proof::runWithFaults(factory, plan, patience) + proof::takeWarnings();
    for (const QString &problem : problems)
        print(QStringLiteral("    ") + problem);
    return problems.isEmpty() ? 0 : 1;
}

/// Whether the seed's own process found everything in order.
bool isInOrder(quint32 seed, const QString &patience)
{
    QProcess process;
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.start(QCoreApplication::applicationFilePath(),
                  {QStringLiteral("--seed"), QString::number(seed), QStringLiteral("--patience"), patience});
    const bool ended = process.waitForFinished(LongestSeedMs);
    if (!ended)
        process.kill();
    process.waitForFinished();
    const bool good = ended && process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0;
    if (!good) {
        print(QString::fromUtf8(process.readAll()));
        print(QStringLiteral("    seed %1 %2")
                  .arg(seed)
                  .arg(!ended                                             ? QStringLiteral("does not end")
                           : process.exitStatus() == QProcess::NormalExit ? QStringLiteral("failed")
                                                                          : QStringLiteral("crashed")));
    }
    return good;
}

/// As many seeds as were asked for, or as fit into the time.
int runMany(const QCommandLineParser &options)
{
    const quint32 first = options.value(QStringLiteral("first")).toUInt();
    const int most = options.value(QStringLiteral("seeds")).toInt();
    const qint64 endMs = options.value(QStringLiteral("seconds")).toLongLong() * 1000;
    QElapsedTimer clock;
    clock.start();
    QStringList bad;
    int done = 0;
    for (; done < most && (endMs == 0 || clock.elapsed() < endMs); ++done) {
        if (!isInOrder(first + quint32(done), options.value(QStringLiteral("patience"))))
            bad.append(QString::number(first + quint32(done)));
    }
    print(QStringLiteral("%1 seeds from %2 in %3 s, %4 not in order %5")
              .arg(done)
              .arg(first)
              .arg(clock.elapsed() / 1000)
              .arg(bad.size())
              .arg(bad.join(QLatin1Char(' '))));
    return bad.isEmpty() ? 0 : 1;
}

} // namespace

int main(int argc, char *argv[])
{
    QApplication application(argc, argv);
    QCommandLineParser options;
    options.setApplicationDescription(QStringLiteral(
        "A random user and random faults against the plugin library and the simulated device."));
    options.addHelpOption();
    options.addOptions({
        {QStringLiteral("seed"), QStringLiteral("Run this seed only."), QStringLiteral("N")},
        {QStringLiteral("first"), QStringLiteral("Begin with this seed."), QStringLiteral("N"),
         QStringLiteral("1")},
        {QStringLiteral("seeds"), QStringLiteral("Run so many."), QStringLiteral("N"), QStringLiteral("500")},
        {QStringLiteral("seconds"), QStringLiteral("Begin no seed after this time; 0: no limit."),
         QStringLiteral("S"), QStringLiteral("0")},
        {QStringLiteral("patience"), QStringLiteral("How many times slower than usual this build is."),
         QStringLiteral("FACTOR"), QStringLiteral("1")},
    });
    options.process(application);
    if (!options.isSet(QStringLiteral("seed")))
        return runMany(options);
    return runSeed(options.value(QStringLiteral("seed")).toUInt(),
                   options.value(QStringLiteral("patience")).toDouble());
}
