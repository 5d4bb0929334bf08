#include "simulator/exit_signals.h"
#include "simulator/replay.h"
#include "simulator/simulator.h"
#include "simulator/standard_streams.h"

#include <QCoreApplication>
#include <QDir>

namespace {

sim::StandardStreams *streams = nullptr;

void print(const QString &text)
{
    streams->print(sim::StandardStreams::Output, text.toUtf8());
}

void printError(const QString &text)
{
    streams->print(sim::StandardStreams::Error, text.toUtf8());
}

int fail(const QString &problem)
{
    printError(QStringLiteral("kbx-simulator: %1").arg(problem));
    return 1;
}

/// Whoever shows these lines knows where they come from.
void printMessage(QtMsgType, const QMessageLogContext &, const QString &text)
{
    printError(text);
}

void takeOrders(sim::Orders *orders)
{
    QObject::connect(orders, &sim::Orders::said, streams,
                     [](const QByteArray &line) { streams->print(sim::StandardStreams::Output, line); });
    QObject::connect(streams, &sim::StandardStreams::lineRead, orders, [orders](const QByteArray &line) {
        streams->print(sim::StandardStreams::Output, orders->answer(line));
    });
    orders->tellAll();
    streams->read(sim::Orders::MostBytes);
}

/// Puts a Simulator or a Replay on the network and stays until the end is asked for.
template <class Device>
int run(Device *device, const QString &name, const sim::Options &options)
{
    const QString problem = device->start();
    if (!problem.isEmpty())
        return fail(problem);
    print(QStringLiteral("%1 on %2:%3").arg(name, options.address.toString()).arg(device->port()));
    if (options.orders)
        takeOrders(device->orders());
    return QCoreApplication::exec();
}

int runReplay(const sim::Options &options)
{
    const sim::RecordingRead read = sim::readRecording(options.replay, options.replayed);
    const QString about = QDir::toNativeSeparators(options.replay) + QStringLiteral(": ");
    if (!read.error.isEmpty())
        return fail(about + read.error);
    for (const QString &note : read.notes)
        printError(about + note);
    sim::Replay replay(read.recording, options, sim::Intervals());
    return run(&replay, read.recording.device.value(QStringLiteral("device")).toString(), options);
}

int run(const sim::Options &options)
{
    sim::ExitSignals signalSource;
    QObject::connect(&signalSource, &sim::ExitSignals::exitRequested, qApp, &QCoreApplication::quit);
    if (options.exitWithParent)
        signalSource.exitWithParent(options.parent);
    if (!options.replay.isEmpty())
        return runReplay(options);
    sim::Simulator simulator(options, sim::Intervals());
    return run(&simulator, options.name, options);
}

} // namespace

int main(int argc, char *argv[])
{
    QCoreApplication application(argc, argv);
    sim::StandardStreams standardStreams;
    streams = &standardStreams;
    const sim::ParsedOptions parsed = sim::parseOptions(application.arguments());
    if (!parsed.help.isEmpty()) {
        print(parsed.help);
        return 0;
    }
    if (!parsed.error.isEmpty()) {
        printError(QStringLiteral("kbx-simulator: %1 Try --help.").arg(parsed.error));
        return 2;
    }
    const QtMessageHandler usual = qInstallMessageHandler(printMessage);
    const int result = run(parsed.options);
    qInstallMessageHandler(usual);
    return result;
}
