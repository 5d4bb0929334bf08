#pragma once

#include "devhost/request_watch.h"

#include <QObject>
#include <QSet>
#include <QTimer>

namespace devhost {

class EditorSession;

/// Follows a snapshot on its way to a device, and says at the end which of its entries were refused or
/// skipped. It ends with its session, or when it has reported.
class SnapshotReport : public QObject
{
    Q_OBJECT

public:
    /// Belongs to @p session, which is about to apply @p snapshot; @p requests is not owned.
    SnapshotReport(EditorSession *session, const RequestWatch *requests, const QByteArray &snapshot);

signals:
    /// @p isProblem when not all entries were taken.
    void finished(const QString &sentence, bool isProblem);

private:
    void look();
    void report();

    EditorSession *m_session;
    const RequestWatch *m_requests;
    int m_lostAtStart;
    QStringList m_entries; ///< the paths that the document names
    QSet<QString> m_sent;
    QStringList m_refused;
    QTimer m_looking;
};

} // namespace devhost
