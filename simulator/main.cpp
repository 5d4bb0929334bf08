#include "simulator/exit_signals.h"
#include "simulator/options.h"
#include "simulator/simulator.h"
#include "simulator/standard_streams.h"

#include <QCoreApplication>

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

int run(const sim::Options &options)
{
    sim::ExitSignals signalSource;
    QObject::connect(&signalSource, &sim::ExitSignals::exitRequested, qApp, &QCoreApplication::quit);
    if (options.exitWithParent)
        signalSource.exitWithParent(options.parent);
    sim::Simulator simulator(options, sim::Intervals());
    const QString problem = simulator.start();
    if (!problem.isEmpty()) {
        printError(QStringLiteral("kbx-simulator: %1").arg(problem));
        return 1;
    }
    print(QStringLiteral("%1 on %2:%3").arg(options.name, options.address.toString()).arg(simulator.port()));
    if (options.orders)
        takeOrders(simulator.orders());
    return QCoreApplication::exec();
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
