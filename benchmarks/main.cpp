// Measures what a user waits for and what an open editor costs. Timings depend on the machine; goals are
// ratios, or have a wide margin. Prints one table; the exit code tells whether every goal was met.

#include "benchmarks/report.h"

#include <QApplication>
#include <QTextStream>

int main(int argc, char **argv)
{
    QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    bench::Report report;
    for (auto *measure :
         {bench::measureOpening, bench::measureDispatcher, bench::measureMixer, bench::measurePainting,
          bench::measureLevels, bench::measureSnapshots, bench::measureTransfer})
        measure(report);
    report.print();
    return report.allGoalsMet() ? 0 : 1;
}
