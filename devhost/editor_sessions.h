#pragma once

#include "devhost/editor_session.h"

#include <QHash>

namespace devhost {

class PluginRegistry;

/// All open editors, at most one a device. It owns the sessions.
class EditorSessions : public QObject
{
    Q_OBJECT

public:
    /// Neither @p registry nor anything in @p place is owned.
    EditorSessions(const PluginRegistry *registry, const SessionPlace &place, QObject *parent = nullptr);
    ~EditorSessions() override;

    void setStyleSource(QWidget *styleSource);
    /// Also tells the open editors.
    void setInterfaceIndex(int index);

    /// Opens the device's editor, or raises the open one. The answer is empty, or a sentence on what failed.
    QString open(KnownDevice *device);
    /// Null when the device has no open editor.
    EditorSession *session(const QString &deviceName) const { return m_sessions.value(deviceName); }
    /// The device whose editor @p window is; empty when it is none.
    QString deviceOf(const QWidget *window) const;
    QStringList openDevices() const { return m_sessions.keys(); }
    void closeAll();

signals:
    /// Comes before the session creates its plugin object, so that who listens hears all that it says.
    void starting(EditorSession *session);
    void opened(EditorSession *session);
    /// The session is no longer listed; it is destroyed when control returns to the event loop.
    void closed(const QString &deviceName);

private:
    void forget(EditorSession *session);

    const PluginRegistry *m_registry;
    SessionPlace m_place;
    QHash<QString, EditorSession *> m_sessions;
};

} // namespace devhost
