#include "devhost/editor_session.h"

#include "devhost/device_transport.h"
#include "devhost/known_device.h"
#include "host/plexo_plugin.h"
#include "host/plexo_plugin_factory.h"

#include <QEvent>
#include <QScreen>

namespace devhost {

namespace {

constexpr QSize FrameSize(8, 32); // at most, of a window

} // namespace

EditorSession::EditorSession(const SessionPlace &place, KnownDevice *device, QObject *parent)
    : QObject(parent)
    , m_place(place)
    , m_device(device)
{
    m_device->hold();
}

EditorSession::~EditorSession()
{
    if (m_plugin) {
        m_plugin->disconnect(this);
        delete m_plugin;
    }
    m_device->letGo();
}

QString EditorSession::start(PlexoPluginFactory *factory)
{
    m_plugin = factory->createPlugin(m_place.styleSource);
    if (!m_plugin || !m_plugin->getPluginWidget())
        return tr("The plugin %1 gave no editor for %2. Try another version of the plugin.")
            .arg(factory->getPluginName(), deviceName());
    m_running = true;
    connectTraffic();
    connectReports();
    factory->attachDevice(m_plugin, m_place.devices, m_device);
    setInterfaceIndex(m_place.interfaceIndex);
    if (m_running)
        presentEditor(factory->getPluginName());
    if (m_running)
        return QString();
    return tr("The plugin closed the editor of %1 at once. Look into the log for its reason.")
        .arg(deviceName());
}

void EditorSession::connectTraffic()
{
    DeviceTransport *text = m_place.text;
    DeviceTransport *aes67 = m_place.aes67;
    const auto sendText = [this, text](const QString &name, pxDevice::e_dev_type, const QByteArray &bytes) {
        text->send(name, bytes);
        emit sentText(bytes);
    };
    connect(m_plugin, &PlexoPlugin::sendVelmarAsciiMsg, this, sendText);
    connect(m_plugin, &PlexoPlugin::sendVelmarAsciiMsgNoWait, this, sendText);
    connect(m_plugin, &PlexoPlugin::sendVelmarAES67Msg, aes67,
            [aes67](const QString &name, pxDevice::e_dev_type, const QByteArray &bytes) {
                aes67->send(name, bytes);
            });
    connect(text, &DeviceTransport::received, m_plugin, [this](const QString &name, const QByteArray &bytes) {
        if (name != deviceName())
            return;
        emit receivedText(bytes);
        m_plugin->recvVelmarAsciiMsg(name, bytes);
    });
    connect(aes67, &DeviceTransport::received, m_plugin,
            [this](const QString &name, const QByteArray &bytes) {
                if (name == deviceName())
                    m_plugin->recvAES67Config(name, bytes);
            });
}

void EditorSession::connectReports()
{
    connect(m_plugin, &PlexoPlugin::pluginRequestClose, this, &EditorSession::end);
    connect(m_plugin, &QObject::destroyed, this, [this] {
        m_plugin.clear(); // what is left of it is no plugin any more
        end();
    });
    connect(m_plugin, &PlexoPlugin::logData, this, &EditorSession::logged);
    connect(m_plugin, &PlexoPlugin::updateMainWindowStatus, this, &EditorSession::hostStatus);
    connect(m_plugin, &PlexoPlugin::switchToDeviceView, this, &EditorSession::deviceViewRequested);
    connect(m_plugin, &PlexoPlugin::sendVelmarAsciiMsgTimeout, this, &EditorSession::replyOverdue);
    connect(m_plugin, &PlexoPlugin::presetLoadFinished, this, &EditorSession::presetLoadFinished);
    connect(m_plugin, &PlexoPlugin::updatePluginStatus, this, [this](const QString &text, bool highlight) {
        m_status = text;
        m_highlighted = highlight;
        emit statusChanged();
    });
}

void EditorSession::presentEditor(const QString &pluginName)
{
    QWidget *widget = editor();
    const QString product = m_device->productName();
    widget->setWindowTitle(
        QStringLiteral("%1 - %2").arg(deviceName(), product.isEmpty() ? pluginName : product));
    widget->installEventFilter(this);
    widget->resize(widget->size().boundedTo(widget->screen()->availableSize() - FrameSize));
    widget->show();
    raiseEditor();
}

void EditorSession::end()
{
    if (!m_running)
        return;
    m_running = false;
    if (m_plugin)
        letGoOfPlugin();
    emit ended();
}

void EditorSession::letGoOfPlugin()
{
    PlexoPlugin *const plugin = m_plugin;
    m_plugin = nullptr;
    plugin->disconnect(this);
    disconnect(m_place.text, nullptr, plugin, nullptr);
    disconnect(m_place.aes67, nullptr, plugin, nullptr);
    if (QWidget *widget = plugin->getPluginWidget()) {
        widget->removeEventFilter(this);
        widget->hide();
    }
    // Later: this may be running inside one of the plugin's own signals.
    plugin->deleteLater();
}

bool EditorSession::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() != QEvent::Close)
        return QObject::eventFilter(watched, event);
    end();
    return true;
}

QString EditorSession::deviceName() const
{
    return m_device->name();
}

QWidget *EditorSession::editor() const
{
    return m_plugin ? m_plugin->getPluginWidget() : nullptr;
}

void EditorSession::raiseEditor()
{
    QWidget *widget = editor();
    if (!widget)
        return;
    widget->setWindowState(widget->windowState() & ~Qt::WindowMinimized);
    widget->raise();
    widget->activateWindow();
}

void EditorSession::setInterfaceIndex(int index)
{
    m_place.interfaceIndex = index;
    if (m_plugin)
        m_plugin->setNetInterfaceIndex(index);
}

int EditorSession::waitingRequests() const
{
    return m_plugin ? m_plugin->waitingRequests() : 0;
}

void EditorSession::setHint(const QString &hint)
{
    if (m_hint == hint)
        return;
    m_hint = hint;
    emit statusChanged();
}

QByteArray EditorSession::snapshot() const
{
    QByteArray bytes;
    if (m_plugin)
        m_plugin->getSnapshot(&bytes);
    return bytes;
}

bool EditorSession::acceptsSnapshot(const QByteArray &snapshot) const
{
    return m_plugin && m_plugin->checkSnapshot(snapshot);
}

void EditorSession::applySnapshot(const QByteArray &snapshot)
{
    if (!m_plugin)
        return;
    emit applyingSnapshot(snapshot);
    m_plugin->applySnapshot(snapshot);
}

bool EditorSession::storePreset(int number)
{
    return callPresetSlot("storePreset", number);
}

bool EditorSession::recallPreset(int number)
{
    return callPresetSlot("recallPreset", number);
}

bool EditorSession::callPresetSlot(const char *slot, int number)
{
    // By name: the base class of plugins does not have these slots, and not every plugin's device has
    // presets.
    const QByteArray signature = QByteArray(slot) + "(int)";
    if (!m_plugin || m_plugin->metaObject()->indexOfSlot(signature) < 0)
        return false;
    return QMetaObject::invokeMethod(m_plugin, slot, Q_ARG(int, number));
}

} // namespace devhost
