#include "devhost/editor_sessions.h"

#include "devhost/known_device.h"
#include "devhost/plugin_registry.h"

#include <QScopedPointer>

namespace devhost {

EditorSessions::EditorSessions(const PluginRegistry *registry, const SessionPlace &place, QObject *parent)
    : QObject(parent)
    , m_registry(registry)
    , m_place(place)
{
}

EditorSessions::~EditorSessions() = default;

void EditorSessions::setStyleSource(QWidget *styleSource)
{
    m_place.styleSource = styleSource;
}

void EditorSessions::setInterfaceIndex(int index)
{
    m_place.interfaceIndex = index;
    for (EditorSession *session : qAsConst(m_sessions))
        session->setInterfaceIndex(index);
}

QString EditorSessions::open(KnownDevice *device)
{
    if (EditorSession *session = m_sessions.value(device->name())) {
        session->raiseEditor();
        return QString();
    }
    if (!device->isPresent())
        return tr("%1 is lost and cannot be opened. Check its power and its network cable.")
            .arg(device->name());
    PlexoPluginFactory *factory = m_registry->factoryFor(device->model());
    if (!factory)
        return tr("No loaded plugin serves the model %1 of %2. Start the host with --plugin and a plugin for "
                  "this model.")
            .arg(device->model(), device->name());
    QScopedPointer<EditorSession> session(new EditorSession(m_place, device, this));
    emit starting(session.get());
    QString error = session->start(factory);
    if (!error.isEmpty())
        return error;
    EditorSession *started = session.take();
    m_sessions.insert(device->name(), started);
    connect(started, &EditorSession::ended, this, [this, started] { forget(started); });
    emit opened(started);
    return QString();
}

void EditorSessions::forget(EditorSession *session)
{
    const QString name = session->deviceName();
    m_sessions.remove(name);
    session->deleteLater();
    emit closed(name);
}

QString EditorSessions::deviceOf(const QWidget *window) const
{
    for (const EditorSession *session : m_sessions) {
        if (session->editor() == window)
            return session->deviceName();
    }
    return QString();
}

void EditorSessions::closeAll()
{
    const QList<EditorSession *> open = m_sessions.values();
    for (EditorSession *session : open)
        session->end();
}

} // namespace devhost
