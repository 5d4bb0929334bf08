#include "devhost/wire_text.h"

#include <QJsonDocument>
#include <QJsonObject>

namespace devhost {

namespace {

QString textOf(const QJsonObject &object, const char *member)
{
    return object.value(QLatin1String(member)).toString();
}

QJsonObject objectIn(const QByteArray &message)
{
    // Binary bytes may follow the text after a zero.
    const int end = message.indexOf('\0');
    return QJsonDocument::fromJson(end < 0 ? message : message.left(end)).object();
}

ReplyText readPlain(const QByteArray &message)
{
    ReplyText reply;
    if (message.startsWith("ACK"))
        reply.verdict = Verdict::Confirmed;
    if (message.startsWith("NACK")) {
        reply.verdict = Verdict::Refused;
        reply.reason = QString::fromUtf8(message).trimmed();
    }
    return reply;
}

} // namespace

RequestText readRequest(const QByteArray &message)
{
    const QJsonObject object = objectIn(message);
    for (const char *command : {"get", "set"}) {
        const QString path = textOf(object, command);
        if (!path.isEmpty())
            return {QString::fromLatin1(command), path, object.value(QLatin1String("value"))};
    }
    const bool isPlain = !message.startsWith('{');
    return {
        isPlain ? QString::fromUtf8(message).section(QLatin1Char(' '), 0, 0).trimmed() : QString(), {}, {}};
}

ReplyText readReply(const QByteArray &message)
{
    const QJsonObject object = objectIn(message);
    if (object.isEmpty())
        return readPlain(message);
    ReplyText reply;
    const QString result = textOf(object, "result");
    reply.verdict = result == QLatin1String("OK") ? Verdict::Confirmed : Verdict::Refused;
    reply.command = textOf(object, "cmd");
    reply.path = textOf(object, "param");
    reply.value = object.value(QLatin1String("value"));
    if (reply.verdict == Verdict::Refused)
        reply.reason = result;
    return reply;
}

} // namespace devhost
