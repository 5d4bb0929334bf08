#include "tests/e2e/live_device.h"

#include "host/plexo_plugin_factory.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QJsonValue>
#include <QNetworkDatagram>
#include <QTest>

namespace support {

namespace {

/// Each device has one of its own: Wine gives a port once, whatever the address.
quint16 controlPort(const pxDevice &device)
{
    return quint16(47800 + device.name().rightRef(1).toInt());
}

} // namespace

LiveDevice::LiveDevice(PlexoPluginFactory *factory, int number, const QStringList &options)
    : EditorSession(factory)
{
    const QString address = QStringLiteral("127.0.0.1%1").arg(number);
    device.setName(QStringLiteral("KBX-000%1").arg(number));
    device.setIpAddress(QHostAddress(address));
    script->setSilent(true);
    m_process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    m_process.start(QStringLiteral(SIMULATOR_FILE),
                    QStringList{QStringLiteral("--name"), device.name(), QStringLiteral("--address"), address,
                                QStringLiteral("--port"), QString::number(controlPort(device)),
                                QStringLiteral("--exit-with-parent")}
                        + options);
    m_socket.bind(QHostAddress(QHostAddress::LocalHost), 0);
    QObject::connect(plugin.data(), &PlexoPlugin::sendVelmarAsciiMsg, &m_socket,
                     [this](const QString &, pxDevice::e_dev_type, const QByteArray &bytes) {
                         m_socket.writeDatagram(bytes, device.ipAddress(), controlPort(device));
                     });
    QObject::connect(&m_socket, &QUdpSocket::readyRead, &m_socket, [this] {
        while (plugin && m_socket.hasPendingDatagrams())
            script->deliver(m_socket.receiveDatagram().data());
    });
}

LiveDevice::~LiveDevice()
{
    close();
    m_process.terminate();
    if (!m_process.waitForFinished(5000)) // a console program of Windows has nothing to be asked by
        m_process.kill();
    m_process.waitForFinished();
}

bool LiveDevice::goLive()
{
    // The process says one line once it listens.
    return QTest::qWaitFor([this] { return m_process.canReadLine(); }, 10000) && EditorSession::goLive();
}

QJsonValue LiveDevice::ask(const QString &path)
{
    QUdpSocket socket;
    socket.bind(QHostAddress(QHostAddress::LocalHost), 0);
    socket.writeDatagram(QStringLiteral("{\"get\":\"%1\"}").arg(path).toUtf8(), device.ipAddress(),
                         controlPort(device));
    if (!QTest::qWaitFor([&socket] { return socket.hasPendingDatagrams(); }))
        return QJsonValue::Undefined;
    return QJsonDocument::fromJson(socket.receiveDatagram().data()).object().value(QLatin1String("value"));
}

} // namespace support
