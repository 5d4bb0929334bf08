#include "proof/device_process.h"

#include <QCoreApplication>
#include <QJsonDocument>
#include <QJsonObject>
#include <QNetworkDatagram>
#include <QUdpSocket>

namespace proof {

namespace {

constexpr quint32 FirstAddress = 0x7f00000a; // 127.0.0.10
constexpr int AnswerMs = 300;
constexpr int Attempts = 3;

} // namespace

DeviceProcess::DeviceProcess(int number)
    : m_name(QStringLiteral("KBX-%1").arg(number, 4, 10, QLatin1Char('0')))
    , m_address(FirstAddress + quint32(number))
    , m_port(quint16(47800 + number))
{
    m_process.setStandardErrorFile(QProcess::nullDevice());
}

DeviceProcess::~DeviceProcess()
{
    m_process.terminate();
    m_process.waitForFinished(5000);
}

bool DeviceProcess::start(const QStringList &options)
{
    m_process.start(QStringLiteral(SIMULATOR_FILE),
                    QStringList{QStringLiteral("--name"), m_name, QStringLiteral("--address"),
                                m_address.toString(), QStringLiteral("--port"), QString::number(m_port),
                                QStringLiteral("--exit-with-parent"), QStringLiteral("--parent"),
                                QString::number(QCoreApplication::applicationPid())}
                        + options);
    return m_process.waitForReadyRead(10000); // it says one line once it listens
}

QJsonValue DeviceProcess::ask(const QString &path) const
{
    return ask(path, Attempts);
}

QJsonValue DeviceProcess::ask(const QString &path, int attempts) const
{
    return exchange(QStringLiteral("{\"get\":\"%1\"}").arg(path).toUtf8(), attempts);
}

void DeviceProcess::set(const QString &path, const QString &text) const
{
    exchange(QStringLiteral("{\"set\":\"%1\", \"value\":\"%2\"}").arg(path, text).toUtf8(), Attempts);
}

/// The value of the reply to @p request.
QJsonValue DeviceProcess::exchange(const QByteArray &request, int attempts) const
{
    QUdpSocket socket;
    socket.bind(QHostAddress(QHostAddress::LocalHost), 0);
    for (int attempt = 0; attempt < attempts; ++attempt) {
        socket.writeDatagram(request, m_address, m_port);
        if (socket.waitForReadyRead(AnswerMs))
            return QJsonDocument::fromJson(socket.receiveDatagram(65536).data())
                .object()
                .value(QLatin1String("value"));
    }
    return QJsonValue::Undefined;
}

} // namespace proof
