// Measures what a user waits for and what an open editor costs. Timings depend on the machine; goals are
// ratios, or have a wide margin. Prints one table; the exit code tells whether every goal was met.

#include "benchmarks/report.h"

#include <QApplication>
#include <QTextStream>

#include <algorithm>

namespace {

struct Area
{
    const char *name;
    void (*measure)(bench::Report &report);
};

constexpr Area Areas[] = {
    {"opening", bench::measureOpening},   {"dispatcher", bench::measureDispatcher},
    {"mixer", bench::measureMixer},       {"painting", bench::measurePainting},
    {"levels", bench::measureLevels},     {"snapshots", bench::measureSnapshots},
    {"transfer", bench::measureTransfer},
};

} // namespace

/// Arguments name the areas to measure; without any, all are. `--save FILE` also writes the table to a file.
int main(int argc, char **argv)
{
    QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    QStringList wanted = QApplication::arguments().mid(1);
    const int save = wanted.indexOf(QStringLiteral("--save"));
    const QString file = save < 0 ? QString() : wanted.value(save + 1);
    if (save >= 0)
        wanted = wanted.mid(0, save) + wanted.mid(save + 2);
    for (const QString &name : qAsConst(wanted)) {
        const auto isNamed = [&name](const Area &area) { return name == QLatin1String(area.name); };
        if (std::none_of(std::begin(Areas), std::end(Areas), isNamed)) {
            QTextStream(stderr) << "There is no area " << name << "; ./bench without arguments measures all."
                                << Qt::endl;
            return 2;
        }
    }
    bench::Report report;
    for (const Area &area : Areas) {
        if (wanted.isEmpty() || wanted.contains(QLatin1String(area.name)))
            area.measure(report);
    }
    report.print();
    if (!file.isEmpty() && !report.save(file)) {
        QTextStream(stderr) << "The table cannot be written to " << file << Qt::endl;
        return 2;
    }
    return report.allGoalsMet() ? 0 : 1;
}
