#include "benchmarks/report.h"

#include <QSaveFile>
#include <QTextStream>

#include <cmath>

namespace bench {

namespace {

QString text(double figure, const QString &unit)
{
    const int decimals = std::abs(figure) < 10 ? 3 : std::abs(figure) < 1000 ? 1 : 0;
    return QStringLiteral("%1 %2").arg(figure, 0, 'f', decimals).arg(unit).trimmed();
}

} // namespace

void Report::add(const QString &what, double figure, const QString &unit)
{
    addRow(what, figure, unit, QString(), true);
}

void Report::addAtMost(const QString &what, double figure, const QString &unit, double most)
{
    addRow(what, figure, unit, QStringLiteral("<= %1").arg(most), figure <= most);
}

void Report::addAtLeast(const QString &what, double figure, const QString &unit, double least)
{
    addRow(what, figure, unit, QStringLiteral(">= %1").arg(least), figure >= least);
}

void Report::addRow(const QString &what, double figure, const QString &unit, const QString &goal, bool met)
{
    const QString verdict = goal.isEmpty() ? QString() : goal + QLatin1String(met ? "  met" : "  MISSED");
    m_rows.append({what, text(figure, unit), verdict});
    m_allMet = m_allMet && met;
}

void Report::print() const
{
    QTextStream out(stdout);
    out << QStringLiteral("%1 %2  %3\n")
               .arg(QStringLiteral("measured"), -66)
               .arg(QStringLiteral("figure"), 16)
               .arg(QStringLiteral("goal"));
    for (const Row &row : m_rows)
        out << QStringLiteral("%1 %2  %3\n").arg(row.what, -66).arg(row.figure, 16).arg(row.goal);
    for (const QString &note : m_notes)
        out << note << Qt::endl;
}

bool Report::save(const QString &fileName) const
{
    QSaveFile file(fileName);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Text))
        return false;
    QTextStream out(&file);
    out << "| measured | figure | goal |\n|---|---|---|\n";
    for (const Row &row : m_rows)
        out << QStringLiteral("| %1 | %2 | %3 |\n").arg(row.what, row.figure, row.goal);
    for (const QString &note : m_notes)
        out << '\n' << note << ".\n";
    out.flush();
    return file.commit();
}

} // namespace bench
