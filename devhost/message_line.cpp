#include "devhost/message_line.h"

#include <QJsonDocument>
#include <QJsonObject>

namespace devhost {

namespace {

QByteArray line(qint64 ms, const char *direction, const QString &device, const QString &member,
                const QString &content)
{
    const QJsonObject object{{QStringLiteral("t_ms"), ms},
                             {QStringLiteral("dir"), QLatin1String(direction)},
                             {QStringLiteral("device"), device},
                             {member, content}};
    return QJsonDocument(object).toJson(QJsonDocument::Compact) + '\n';
}

} // namespace

QByteArray messageLine(qint64 ms, const char *direction, const QString &device, const QByteArray &message)
{
    const QString text = QString::fromUtf8(message);
    if (text.toUtf8() != message)
        return bytesLine(ms, direction, device, message);
    return line(ms, direction, device, QStringLiteral("text"), text);
}

QByteArray bytesLine(qint64 ms, const char *direction, const QString &device, const QByteArray &message)
{
    return line(ms, direction, device, QStringLiteral("bytes"), QString::fromLatin1(message.toBase64()));
}

} // namespace devhost
