#pragma once

#include <QAbstractTableModel>
#include <QDateTime>

#include <deque>

namespace devhost {

/// Where a line of the communication log comes from.
enum class LogSource { Sent, Received, Plugin, Host, Problem };

struct LogEntry
{
    QDateTime time;
    LogSource source = LogSource::Host;
    QString device; ///< empty for what concerns no device
    QString text;
};

/// The communication log: a bounded list of lines, the oldest dropped first.
class CommunicationLog : public QAbstractTableModel
{
    Q_OBJECT

public:
    enum Column { Time, Device, Source, Text, ColumnCount };

    /// Never holds more than @p mostLines.
    explicit CommunicationLog(int mostLines, QObject *parent = nullptr);

    void append(LogSource source, const QString &device, const QString &text);
    void clear();
    const LogEntry &entry(int row) const { return m_entries[std::size_t(row)]; }

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

    /// One line of text, as copied and saved.
    static QString lineOf(const LogEntry &entry);

private:
    void dropOldest();

    int m_mostLines;
    std::deque<LogEntry> m_entries;
};

} // namespace devhost
