#pragma once

#include <QElapsedTimer>
#include <QString>
#include <QVector>

#include <algorithm>
#include <limits>

namespace bench {

/// Collects the rows of the benchmark table and whether each goal was met.
class Report
{
public:
    /// A figure without a goal.
    void add(const QString &what, double figure, const QString &unit);
    /// A figure that shall not exceed @p most.
    void addAtMost(const QString &what, double figure, const QString &unit, double most);
    /// A figure that shall not fall below @p least.
    void addAtLeast(const QString &what, double figure, const QString &unit, double least);

    void print() const;
    bool allGoalsMet() const { return m_allMet; }

private:
    void addRow(const QString &what, double figure, const QString &unit, const QString &goal, bool met);

    struct Row
    {
        QString what;
        QString figure;
        QString goal;
    };
    QVector<Row> m_rows;
    bool m_allMet = true;
};

inline double median(QVector<double> figures)
{
    std::sort(figures.begin(), figures.end());
    return figures.isEmpty() ? std::numeric_limits<double>::quiet_NaN() : figures.at(figures.size() / 2);
}

/// Microseconds that @p work takes, the median of @p runs.
template <typename Work>
double medianMicroseconds(int runs, Work work)
{
    QVector<double> figures;
    for (int run = 0; run < runs; ++run) {
        QElapsedTimer timer;
        timer.start();
        work();
        figures.append(double(timer.nsecsElapsed()) / 1000.0);
    }
    return median(figures);
}

void measureOpening(Report &report);
void measureDispatcher(Report &report);
void measureLevels(Report &report);
void measureMixer(Report &report);
void measurePainting(Report &report);
void measureSnapshots(Report &report);
void measureTransfer(Report &report);

} // namespace bench
