#include "tests/e2e/live_device.h"

#include "host/plexo_plugin_factory.h"

#include <QCoreApplication>
#include <QJsonDocument>
#include <QJsonObject>
#include <QJsonValue>
#include <QNetworkDatagram>
#include <QTest>

namespace support {

namespace {

constexpr quint16 ControlPort = 47800;
constexpr int LoopbackIndex = 1;

} // namespace

LiveDevice::LiveDevice(PlexoPluginFactory *factory, int number, const QStringList &options)
    : plugin(factory->createPlugin(nullptr))
    , m_factory(factory)
{
    const QString address = QStringLiteral("127.0.0.1%1").arg(number);
    device.setName(QStringLiteral("KBX-000%1").arg(number));
    device.setIpAddress(QHostAddress(address));
    device.setProductName(QStringLiteral("TarnKBX"));
    device.setFirmwareVersion(1002000);
    device.setPresent(true);
    m_process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    m_process.start(QStringLiteral(SIMULATOR_FILE),
                    QStringList{QStringLiteral("--name"), device.name(), QStringLiteral("--address"), address,
                                QStringLiteral("--exit-with-parent")}
                        + options);
    m_socket.bind(QHostAddress(QHostAddress::LocalHost), 0);
    carry();
}

LiveDevice::~LiveDevice()
{
    plugin.reset();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    m_process.terminate();
    m_process.waitForFinished();
}

void LiveDevice::carry()
{
    QObject::connect(plugin.data(), &PlexoPlugin::sendVelmarAsciiMsg, &m_socket,
                     [this](const QString &, pxDevice::e_dev_type, const QByteArray &bytes) {
                         sent.append(QString::fromUtf8(bytes));
                         m_socket.writeDatagram(bytes, device.ipAddress(), ControlPort);
                     });
    QObject::connect(&m_socket, &QUdpSocket::readyRead, &m_socket, [this] {
        while (m_socket.hasPendingDatagrams()) {
            const QByteArray reply = m_socket.receiveDatagram().data();
            if (plugin)
                plugin->recvVelmarAsciiMsg(device.name(), reply);
        }
    });
}

bool LiveDevice::goLive()
{
    // The process says one line once it listens.
    if (!QTest::qWaitFor([this] { return m_process.canReadLine(); }, 10000))
        return false;
    plugin->setNetInterfaceIndex(LoopbackIndex);
    m_factory->attachDevice(plugin.data(), nullptr, &device);
    editor()->show();
    const QString meteringRequest = QStringLiteral("{\"set\":\"/control/req_metering\", \"value\":100}");
    return QTest::qWaitFor([this, &meteringRequest] { return sent.contains(meteringRequest); }, 10000);
}

QJsonValue LiveDevice::ask(const QString &path)
{
    QUdpSocket socket;
    socket.bind(QHostAddress(QHostAddress::LocalHost), 0);
    socket.writeDatagram(QStringLiteral("{\"get\":\"%1\"}").arg(path).toUtf8(), device.ipAddress(),
                         ControlPort);
    if (!QTest::qWaitFor([&socket] { return socket.hasPendingDatagrams(); }))
        return QJsonValue::Undefined;
    return QJsonDocument::fromJson(socket.receiveDatagram().data()).object().value(QLatin1String("value"));
}

} // namespace support
