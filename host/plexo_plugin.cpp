#include "host/plexo_plugin.h"

#include "host/plexo_plugin_factory.h"
#include "host/px_devices.h"

#include <QTimer>

namespace {

QString deviceConnected()
{
    return QStringLiteral("Device connected...");
}

} // namespace

PlexoPlugin::PlexoPlugin(QWidget *parent)
    : QWidget(parent)
    , m_text(new QTimer(this))
    , m_aes67(new QTimer(this))
{
}

PlexoPlugin::~PlexoPlugin() = default;

bool PlexoPlugin::getOptionalFlag()
{
    return false;
}

void PlexoPlugin::handleHostData(QByteArray) { }

void PlexoPlugin::setNetInterfaceIndex(int index)
{
    m_netInterfaceIndex = index;
    emit netInterfaceChanged();
}

int PlexoPlugin::getNetInterfaceIndex()
{
    return m_netInterfaceIndex;
}

void PlexoPlugin::setFactory(PlexoPluginFactory *factory)
{
    m_factory = factory;
}

PlexoPluginFactory *PlexoPlugin::getFactory()
{
    return m_factory;
}

void PlexoPlugin::letGoOfDevice(const pxDevice *next)
{
    if (m_device)
        disconnect(m_device, nullptr, this, nullptr);
    // One that the host has deleted meanwhile was another one, too.
    if (m_attachment > 0 && m_device != next) {
        // What was meant for it would be waited for, and asked about, in the name of the next one.
        m_text.clear();
        m_aes67.clear();
    }
    if (m_device != next) {
        ++m_attachment;
        m_text.timeoutGuard = false;
        m_aes67.timeoutGuard = false;
    }
    disconnect(m_text.timer(), nullptr, this, nullptr);
    disconnect(m_aes67.timer(), nullptr, this, nullptr);
}

void PlexoPlugin::setDevice(pxDevice *device)
{
    letGoOfDevice(device);
    m_device = device;
    m_noConnect = false;
    if (device) {
        connect(device, &pxDevice::PresenceChanged, this, &PlexoPlugin::devicePresenceChanged,
                Qt::QueuedConnection);
        connect(device, &pxDevice::DataChanged, this, &PlexoPlugin::deviceDataChanged);
    }
    connect(m_text.timer(), &QTimer::timeout, this, &PlexoPlugin::handleVelmarAsciiRequestTimeout);
    connect(m_aes67.timer(), &QTimer::timeout, this, &PlexoPlugin::handleVelmarAES67RequestTimeout);
    emit deviceChanged();
}

void PlexoPlugin::setDeviceNoConnect(pxDevice *device)
{
    letGoOfDevice(device);
    m_device = device;
    m_noConnect = true;
    connect(m_text.timer(), &QTimer::timeout, this, &PlexoPlugin::handleVelmarAsciiRequestTimeout);
}

void PlexoPlugin::setDevices(pxDevices *devices)
{
    m_devices = devices;
    emit devicesChanged();
}

pxDevice *PlexoPlugin::getDevice()
{
    return m_device;
}

pxDevices *PlexoPlugin::getDevices()
{
    return m_devices;
}

QString PlexoPlugin::getDeviceName()
{
    return m_device ? m_device->name() : QString();
}

QHostAddress PlexoPlugin::getDeviceAddress()
{
    return m_device ? m_device->ipAddress() : QHostAddress();
}

bool PlexoPlugin::isDevicePresent()
{
    return m_device && m_device->isPresent();
}

void PlexoPlugin::loadPreset(int preset)
{
    const QPointer<PlexoPlugin> alive(this);
    emit updateMainWindowStatus(QStringLiteral("Loading preset from device..."));
    if (alive)
        queueVelmarAsciiMsg(getDeviceName(), QStringLiteral("LOAD %1\r").arg(preset).toLatin1(), false);
    if (alive)
        emit deviceChanged();
}

void PlexoPlugin::savePreset(int preset)
{
    const QPointer<PlexoPlugin> alive(this);
    emit updateMainWindowStatus(QStringLiteral("Saving preset to device..."));
    if (alive)
        queueVelmarAsciiMsg(getDeviceName(), QStringLiteral("SAVE %1\r").arg(preset).toLatin1(), false);
}

void PlexoPlugin::setVelmarAsciiTimeout(int ms)
{
    m_replyTimeoutMs = ms;
}

int PlexoPlugin::getVelmarAsciiTimeout()
{
    return m_replyTimeoutMs;
}

QTimer *PlexoPlugin::getVelmarAsciiTimer()
{
    return m_text.timer();
}

void PlexoPlugin::setSettingsChanged(bool changed)
{
    m_settingsChanged = changed;
    if (!changed)
        emit updatePluginStatus(deviceConnected(), false);
}

bool PlexoPlugin::getSettingsChanged()
{
    return isDevicePresent() && m_settingsChanged;
}

void PlexoPlugin::setPluginFlag(bool flag)
{
    m_pluginFlag = flag;
}

bool PlexoPlugin::getPluginFlag()
{
    return isDevicePresent() && m_pluginFlag;
}

bool PlexoPlugin::deviceMeetsThreshold()
{
    if (!m_factory || !m_device || !m_devices)
        return false;
    const QString key = m_factory->getThresholdKey();
    return key != QLatin1String("NA") && m_device->featureLevel() >= m_devices->threshold(key);
}

void PlexoPlugin::deviceDataChanged()
{
    emit deviceChanged();
}

void PlexoPlugin::recvAES67Status(QString, QByteArray) { }

void PlexoPlugin::applyAES67Config(QString) { }

void PlexoPlugin::handleMetering(QString, QVector<quint8>, QVector<quint8>) { }

void PlexoPlugin::emitLogData(QString str)
{
    emit logData(str);
}

void PlexoPlugin::setDebugFromFramework(bool debug)
{
    m_debugFromFramework = debug;
    emit frameworkDebug();
}

bool PlexoPlugin::getDebugFromFramework()
{
    return m_debugFromFramework;
}

bool PlexoPlugin::getNoConnectFlag()
{
    return m_noConnect;
}
