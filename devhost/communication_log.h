#pragma once

#include "devhost/log_entry.h"

#include <QAbstractTableModel>
#include <QSet>
#include <QTimer>

#include <deque>

namespace devhost {

/// The communication log: a bounded list of entries, the oldest dropped first. Rows come and change a few
/// times a second, all that came since in one go, so that a view is laid out seldom however many messages
/// there are.
class CommunicationLog : public QAbstractTableModel
{
    Q_OBJECT

public:
    enum Column { Time, Device, Source, Text, ReplyTime, Reply, ColumnCount };

    /// Never holds more than @p mostLines, nor entries of more than @p mostBytes (but always the newest one).
    CommunicationLog(int mostLines, qint64 mostBytes, QObject *parent = nullptr);

    /// The answer is the entry's number: it counts all entries there ever were.
    qint64 append(const LogEntry &entry);
    void append(LogSource source, const QString &device, const QString &text);
    /// False when the log no longer has the request.
    bool answer(qint64 request, const QByteArray &bytes, const RequestWatch::Answer &answer);
    void markLost(qint64 request);
    void clear();

    const LogEntry &entry(int row) const { return m_entries[std::size_t(row)]; }
    qint64 numberOf(int row) const { return m_first + row; }
    /// -1 before the first entry.
    qint64 newest() const { return m_first + qint64(m_entries.size()) - 1; }
    /// Null when the log no longer has it; a row may still have to come for it.
    const LogEntry *numbered(qint64 number) const;

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

signals:
    void entryChanged(qint64 number);

private:
    LogEntry *find(qint64 number);
    void change(qint64 number);
    void showNews();
    void makeRoom(int lines, qint64 bytes);
    int countToDrop(qint64 excess) const;

    int m_mostLines;
    qint64 m_mostBytes;
    qint64 m_bytes = 0;
    qint64 m_first = 0; ///< number of the first entry
    std::deque<LogEntry> m_entries;
    int m_rows = 0; ///< entries that a view knows of
    QSet<qint64> m_changed;
    QTimer m_showing;
};

} // namespace devhost
