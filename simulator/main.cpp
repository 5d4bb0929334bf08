#include "simulator/exit_signals.h"
#include "simulator/options.h"
#include "simulator/simulator.h"

#include <QCoreApplication>
#include <QTextStream>

namespace {

void print(FILE *stream, const QString &text)
{
    QTextStream(stream) << text << Qt::endl;
}

} // namespace

int main(int argc, char *argv[])
{
    QCoreApplication application(argc, argv);
    const sim::ParsedOptions parsed = sim::parseOptions(application.arguments());
    if (!parsed.help.isEmpty()) {
        print(stdout, parsed.help);
        return 0;
    }
    if (!parsed.error.isEmpty()) {
        print(stderr, QStringLiteral("kbx-simulator: %1 Try --help.").arg(parsed.error));
        return 2;
    }
    sim::ExitSignals signalSource;
    QObject::connect(&signalSource, &sim::ExitSignals::exitRequested, &application, &QCoreApplication::quit);
    if (parsed.options.exitWithParent)
        signalSource.exitWithParent(parsed.options.parent);

    // Whoever shows these lines knows where they come from.
    qSetMessagePattern(QStringLiteral("%{message}"));
    sim::Simulator simulator(parsed.options, sim::Intervals());
    const QString problem = simulator.start();
    if (!problem.isEmpty()) {
        print(stderr, QStringLiteral("kbx-simulator: %1").arg(problem));
        return 1;
    }
    print(stdout,
          QStringLiteral("%1 on %2:%3")
              .arg(parsed.options.name, parsed.options.address.toString())
              .arg(simulator.port()));
    return application.exec();
}
