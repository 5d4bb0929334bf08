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
    bool refusal = false; ///< a reply that says no
};

/// The communication log: a bounded list of lines, the oldest dropped first. Of a long line only the
/// beginning is shown; entry() has all of it.
class CommunicationLog : public QAbstractTableModel
{
    Q_OBJECT

public:
    enum Column { Time, Device, Source, Text, ColumnCount };

    /// Never holds more than @p mostLines, nor texts of more than @p mostBytes (but always the newest line).
    CommunicationLog(int mostLines, qint64 mostBytes, QObject *parent = nullptr);

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
    void makeRoomFor(const LogEntry &newcomer);
    int countToDrop(qint64 excess) const;

    int m_mostLines;
    qint64 m_mostBytes;
    qint64 m_bytes = 0;
    std::deque<LogEntry> m_entries;
};

} // namespace devhost
