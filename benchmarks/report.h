#pragma once

#include <QElapsedTimer>
#include <QStringList>
#include <QVector>

#include <algorithm>
#include <ctime>
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

    /// What the table does not show, in words.
    void note(const QString &text) { m_notes.append(text); }

    void print() const;
    /// Writes the rows as a table in Markdown. False when the file cannot be written.
    bool save(const QString &fileName) const;
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
    QStringList m_notes;
    bool m_allMet = true;
};

inline double median(QVector<double> figures)
{
    std::sort(figures.begin(), figures.end());
    return figures.isEmpty() ? std::numeric_limits<double>::quiet_NaN() : figures.at(figures.size() / 2);
}

/// Microseconds of processor time that @p work takes, the median of @p runs: what else runs on the machine
/// counts less that way.
template <typename Work>
double medianMicroseconds(int runs, Work work)
{
    QVector<double> figures;
    for (int run = 0; run < runs; ++run) {
        const std::clock_t before = std::clock();
        work();
        figures.append(double(std::clock() - before) * 1e6 / CLOCKS_PER_SEC);
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
