#pragma once

#include "devhost/communication_log.h"

#include <QSortFilterProxyModel>
#include <QStringList>

namespace devhost {

/// Shows the part of the communication log that the user asked for: of one device or all, without what
/// repeats itself, and entries that hold every word of the filter text. A word that begins with "-" drops the
/// entries that hold the rest of it.
class LogFilter : public QSortFilterProxyModel
{
    Q_OBJECT

public:
    /// What can be left out. Problems among it are shown all the same.
    enum Kind { Polling, Echoes, Notes, KindCount };

    explicit LogFilter(CommunicationLog *log, QObject *parent = nullptr);

    /// Words are separated by blanks and compared without regard to case, with device name, message and
    /// reply.
    void setText(const QString &text);
    /// An empty name: all devices, and what concerns none.
    void setDevice(const QString &name);
    /// Only notes are shown until the user says otherwise.
    void setShown(Kind kind, bool shown);
    bool isShown(Kind kind) const { return m_shown[kind]; }
    void setOnlyProblems(bool only);

    /// The entry behind a row of this model, and its number in the log.
    const LogEntry &entry(int row) const;
    qint64 numberOf(int row) const;
    /// The entries of @p rows in order, or of all shown rows.
    QVector<LogEntry> entries(const QList<int> &rows) const;
    QVector<LogEntry> allEntries() const;

protected:
    bool filterAcceptsRow(int row, const QModelIndex &parent) const override;

private:
    bool isLeftOut(const LogEntry &entry) const;

    CommunicationLog *m_log;
    QStringList m_wanted;
    QStringList m_unwanted;
    QString m_device;
    bool m_shown[KindCount] = {false, false, true};
    bool m_onlyProblems = false;
};

} // namespace devhost
