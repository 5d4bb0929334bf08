#pragma once

#include "devhost/communication_log.h"

#include <QSet>
#include <QSortFilterProxyModel>
#include <QStringList>

namespace devhost {

/// Shows the part of the communication log that the user asked for: chosen sources, and lines that hold
/// every word of the filter text. A word that begins with "-" drops the lines that hold the rest of it.
class LogFilter : public QSortFilterProxyModel
{
    Q_OBJECT

public:
    explicit LogFilter(CommunicationLog *log, QObject *parent = nullptr);

    /// Words are separated by blanks and compared without regard to case, with device name and message.
    void setText(const QString &text);
    /// Problems are always shown.
    void setSourceShown(LogSource source, bool shown);

    /// The lines of @p proxyRows in order, or of all shown rows.
    QString linesOf(const QList<int> &proxyRows) const;
    QString allLines() const;

protected:
    bool filterAcceptsRow(int row, const QModelIndex &parent) const override;

private:
    CommunicationLog *m_log;
    QStringList m_wanted;
    QStringList m_unwanted;
    QSet<int> m_hiddenSources;
};

} // namespace devhost
