#pragma once

#include "devhost/request_watch.h"

#include <QElapsedTimer>
#include <QObject>
#include <QTimer>

namespace devhost {

class EditorSession;

/// Follows how an editor gets on with its device: whether it has read the device in good time, and how many
/// of its requests wait. It ends with its session.
class SessionWatch : public QObject
{
    Q_OBJECT

public:
    /// Belongs to @p session; @p requests is not owned. An editor that has not read its device after
    /// @p inGoodTimeMs is stuck; the default is many times what that takes.
    SessionWatch(EditorSession *session, const RequestWatch *requests, int inGoodTimeMs = 5000);

signals:
    /// The editor has not read its device in good time: a sentence on what it waits for and what to check.
    void stuck(const QString &sentence);
    /// It has read the device after all.
    void recovered();

private:
    enum class State { Starting, Stuck, Live };

    void noteRefusal(const Refusal &refusal);
    void noteReply(const QByteArray &message);
    void look();
    void lookForLife();
    QString waitingText() const;
    QString reasonForStuck() const;
    QString othersText() const;

    EditorSession *m_session;
    const RequestWatch *m_requests;
    int m_inGoodTimeMs;
    State m_state = State::Starting;
    int m_quietLooks = 0; ///< one after the other at which nothing waited
    DeviceFigures m_atStart;
    QString m_refusal; ///< the last thing that the device refused to tell, and has not told since
    QString m_refusedPath;
    QElapsedTimer m_sinceStart;
    QTimer m_looking;
};

} // namespace devhost
