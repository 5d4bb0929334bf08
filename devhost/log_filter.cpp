#include "devhost/log_filter.h"

#include <algorithm>
#include <numeric>

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

void LogFilter::setDevice(const QString &name)
{
    m_device = name;
    invalidateFilter();
}

void LogFilter::setShown(Kind kind, bool shown)
{
    m_shown[kind] = shown;
    invalidateFilter();
}

void LogFilter::setOnlyProblems(bool only)
{
    m_onlyProblems = only;
    invalidateFilter();
}

bool LogFilter::isLeftOut(const LogEntry &entry) const
{
    if (entry.isProblem())
        return false;
    if (m_onlyProblems)
        return true;
    if (entry.isNote())
        return !m_shown[entry.isEcho() ? Echoes : Notes];
    return entry.isPolling() && !m_shown[Polling];
}

bool LogFilter::filterAcceptsRow(int row, const QModelIndex &) const
{
    const LogEntry &entry = m_log->entry(row);
    if (isLeftOut(entry) || (!m_device.isEmpty() && entry.device != m_device))
        return false;
    if (m_wanted.isEmpty() && m_unwanted.isEmpty())
        return true;
    const QString texts[]
        = {entry.device, QString::fromUtf8(entry.message), QString::fromUtf8(entry.reply), entry.summary};
    const auto holds = [&texts](const QString &word) {
        return std::any_of(std::begin(texts), std::end(texts),
                           [&word](const QString &text) { return text.contains(word, Qt::CaseInsensitive); });
    };
    return std::all_of(m_wanted.cbegin(), m_wanted.cend(), holds)
        && std::none_of(m_unwanted.cbegin(), m_unwanted.cend(), holds);
}

const LogEntry &LogFilter::entry(int row) const
{
    return m_log->entry(mapToSource(index(row, 0)).row());
}

qint64 LogFilter::numberOf(int row) const
{
    return m_log->numberOf(mapToSource(index(row, 0)).row());
}

QVector<LogEntry> LogFilter::entries(const QList<int> &rows) const
{
    QVector<LogEntry> entries;
    for (int row : rows)
        entries.append(entry(row));
    return entries;
}

QVector<LogEntry> LogFilter::allEntries() const
{
    QVector<int> rows(rowCount());
    std::iota(rows.begin(), rows.end(), 0);
    return entries(rows.toList());
}

} // namespace devhost
