#include "proof/plugin_under_proof.h"
#include "proof/soak.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QTextStream>

int main(int argc, char *argv[])
{
    proof::beginCensus();
    QApplication application(argc, argv);
    QCommandLineParser options;
    options.setApplicationDescription(QStringLiteral("Random users at several devices for a long time."));
    options.addHelpOption();
    const auto add = [&options](const char *name, const char *text, const char *standard) {
        options.addOption(
            {QLatin1String(name), QLatin1String(text), QStringLiteral("N"), QLatin1String(standard)});
    };
    add("minutes", "How long.", "60");
    add("rounds", "After so many parts of it, take a look at what the program holds.", "100");
    add("devices", "How many, 1 to 9.", "4");
    add("pause", "Of each user between two acts, in ms.", "200");
    add("seed", "Of users and losses.", "1");
    add("growth", "Of memory from the second quarter to the last, at most this many per cent.", "2");
    options.process(application);
    const auto number = [&options](const char *name) { return options.value(QLatin1String(name)).toInt(); };
    proof::SoakPlan plan;
    plan.minutes = number("minutes");
    plan.rounds = number("rounds");
    plan.devices = number("devices");
    plan.pauseMs = number("pause");
    plan.seed = quint32(number("seed"));
    plan.mostGrowth = 1 + number("growth") / 100.0;
    const QStringList problems = proof::Soak(proof::loadPlugin(), plan).run();
    for (const QString &problem : problems)
        QTextStream(stdout) << problem << Qt::endl;
    return problems.isEmpty() ? 0 : 1;
}
