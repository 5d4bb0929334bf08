#include "devhost/message_recorder.h"

#include "devhost/device_transport.h"

#include <QDir>
#include <QJsonDocument>
#include <QJsonObject>

namespace devhost {

MessageRecorder::MessageRecorder(const DeviceTransport *transport, QObject *parent)
    : QObject(parent)
{
    connect(transport, &DeviceTransport::sent, this,
            [this](const QString &device, const QByteArray &bytes) { write("tx", device, bytes); });
    connect(transport, &DeviceTransport::received, this,
            [this](const QString &device, const QByteArray &bytes) { write("rx", device, bytes); });
}

QString MessageRecorder::start(const QString &path)
{
    m_file.setFileName(path);
    m_clock.start();
    if (m_file.open(QIODevice::WriteOnly | QIODevice::Truncate))
        return QString();
    return tr("%1 cannot be written: %2. Choose another folder.").arg(QDir::toNativeSeparators(path), m_file.errorString());
}

void MessageRecorder::write(const char *direction, const QString &device, const QByteArray &message)
{
    const QJsonObject line{{QStringLiteral("t_ms"), m_clock.elapsed()},
                           {QStringLiteral("dir"), QLatin1String(direction)},
                           {QStringLiteral("device"), device},
                           {QStringLiteral("text"), QString::fromUtf8(message)}};
    m_file.write(QJsonDocument(line).toJson(QJsonDocument::Compact) + '\n');
    m_file.flush();
}

} // namespace devhost
