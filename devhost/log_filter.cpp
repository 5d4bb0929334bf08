#include "devhost/log_filter.h"

#include <algorithm>

namespace devhost {

LogFilter::LogFilter(CommunicationLog *log, QObject *parent)
    : QSortFilterProxyModel(parent)
    , m_log(log)
{
    setSourceModel(log);
}

void LogFilter::setText(const QString &text)
{
    m_wanted.clear();
    m_unwanted.clear();
    for (const QString &word : text.split(QLatin1Char(' '), Qt::SkipEmptyParts)) {
        if (!word.startsWith(QLatin1Char('-')))
            m_wanted.append(word);
        else if (word.size() > 1)
            m_unwanted.append(word.mid(1));
    }
    invalidateFilter();
}

void LogFilter::setSourceShown(LogSource source, bool shown)
{
    if (shown)
        m_hiddenSources.remove(int(source));
    else
        m_hiddenSources.insert(int(source));
    invalidateFilter();
}

bool LogFilter::filterAcceptsRow(int row, const QModelIndex &) const
{
    const LogEntry &entry = m_log->entry(row);
    if (m_hiddenSources.contains(int(entry.source)))
        return false;
    const auto holds = [&entry](const QString &word) {
        return entry.text.contains(word, Qt::CaseInsensitive)
            || entry.device.contains(word, Qt::CaseInsensitive);
    };
    return std::all_of(m_wanted.cbegin(), m_wanted.cend(), holds)
        && std::none_of(m_unwanted.cbegin(), m_unwanted.cend(), holds);
}

QString LogFilter::linesOf(const QList<int> &proxyRows) const
{
    QString lines;
    for (int row : proxyRows)
        lines += CommunicationLog::lineOf(m_log->entry(mapToSource(index(row, 0)).row())) + QLatin1Char('\n');
    return lines;
}

QString LogFilter::allLines() const
{
    QList<int> rows;
    for (int row = 0; row < rowCount(); ++row)
        rows.append(row);
    return linesOf(rows);
}

} // namespace devhost
