#include "host/plexo_plugin.h"

#include "host/plexo_plugin_factory.h"
#include "host/px_devices.h"

#include <QTimer>

PlexoPlugin::PlexoPlugin(QWidget *parent)
    : QWidget(parent)
{
    using Sending = RequestChannel::Sending;
    connect(&m_text, &RequestChannel::send, this, &PlexoPlugin::sendVelmarAsciiMsg);
    connect(&m_text, &RequestChannel::send, this,
            [this](const QString &name, auto, const QByteArray &bytes, auto kind, Sending sending) {
                if (sending == RequestChannel::FirstTime)
                    logRequest(name, bytes, kind);
            });
    connect(&m_text, &RequestChannel::answered, this, &PlexoPlugin::handleTextAnswer);
    connect(&m_text, &RequestChannel::timedOut, this, &PlexoPlugin::sendVelmarAsciiMsgTimeout);
    connect(&m_aes67, &RequestChannel::send, this, &PlexoPlugin::sendVelmarAES67Msg);
    for (RequestChannel *channel : {&m_text, &m_aes67}) {
        connect(channel, &RequestChannel::idle, this, &PlexoPlugin::updateGuiData);
        connect(channel, &RequestChannel::timedOut, this, [=] { askAfterTimeout(*channel); });
        connect(channel, &RequestChannel::dropped, this, [this](const PendingRequest &request) {
            logMessage(tr("Command dropped, no device is attached:"), request.dev_name, request.bytes);
        });
    }
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

void PlexoPlugin::attach(pxDevice *device)
{
    disconnect(m_aes67.timer(), &QTimer::timeout, this, &PlexoPlugin::handleVelmarAES67RequestTimeout);
    if (m_device) {
        disconnect(m_device, &pxDevice::PresenceChanged, this, &PlexoPlugin::devicePresenceChanged);
        disconnect(m_device, &pxDevice::DataChanged, this, &PlexoPlugin::deviceDataChanged);
    }
    if (m_device != device)
        m_attachment = std::make_unique<QObject>();
    m_device = device;
    m_text.setDevice(device);
    m_aes67.setDevice(device);
    connect(m_text.timer(), &QTimer::timeout, this, &PlexoPlugin::handleVelmarAsciiRequestTimeout,
            Qt::UniqueConnection);
}

void PlexoPlugin::setDevice(pxDevice *device)
{
    attach(device);
    m_noConnect = false;
    if (device) {
        connect(device, &pxDevice::PresenceChanged, this, &PlexoPlugin::devicePresenceChanged,
                Qt::QueuedConnection);
        connect(device, &pxDevice::DataChanged, this, &PlexoPlugin::deviceDataChanged);
    }
    connect(m_aes67.timer(), &QTimer::timeout, this, &PlexoPlugin::handleVelmarAES67RequestTimeout);
    emit deviceChanged();
}

void PlexoPlugin::setDeviceNoConnect(pxDevice *device)
{
    attach(device);
    m_noConnect = true;
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
    queueVelmarAsciiMsg(getDeviceName(), QStringLiteral("LOAD %1\r").arg(preset).toLatin1(), false);
    emit updateMainWindowStatus(tr("Loading preset from device..."));
    if (alive)
        emit deviceChanged();
}

void PlexoPlugin::savePreset(int preset)
{
    queueVelmarAsciiMsg(getDeviceName(), QStringLiteral("SAVE %1\r").arg(preset).toLatin1(), false);
    emit updateMainWindowStatus(tr("Saving preset to device..."));
}

void PlexoPlugin::setVelmarAsciiTimeout(int ms)
{
    m_text.setReplyTimeout(ms);
    m_aes67.setReplyTimeout(ms);
}

int PlexoPlugin::getVelmarAsciiTimeout()
{
    return m_text.replyTimeout();
}

QTimer *PlexoPlugin::getVelmarAsciiTimer()
{
    return m_text.timer();
}

void PlexoPlugin::setSettingsChanged(bool changed)
{
    m_settingsChanged = changed;
    if (!changed)
        emit updatePluginStatus(tr("Device connected..."), false);
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
