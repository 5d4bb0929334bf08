#include "devhost/wire_text.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>

#include <algorithm>

namespace devhost {

namespace {

constexpr int DeepestIndent = 20; // hostile texts nest without end

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

bool isText(const QByteArray &message, const QString &text)
{
    return text.toUtf8() == message;
}

QString escaped(QChar character)
{
    switch (character.unicode()) {
    case '\r':
        return QStringLiteral("\\r");
    case '\n':
        return QStringLiteral("\\n");
    case '\t':
        return QStringLiteral("\\t");
    default:
        return QStringLiteral("\\x%1").arg(character.unicode(), 2, 16, QLatin1Char('0'));
    }
}

/// Breaks lines where JSON may be broken, but not within an array of plain numbers, and changes nothing else:
/// members stay in order, doubled ones too, and numbers as they were written.
QString withLineBreaks(const QString &json)
{
    static const QRegularExpression tokens(
        QStringLiteral(R"re("(?:[^"\\]++|\\.)*+"|\[[^\[\]{}"]*\]|[^\s\[\]{}",:]+|[\[\]{},:])re"));
    static const QRegularExpression comma(QStringLiteral("\\s*,\\s*"));
    int depth = 0;
    const auto lineBreak = [&depth] {
        return QLatin1Char('\n') + QString(4 * std::min(depth, DeepestIndent), QLatin1Char(' '));
    };
    QString lines;
    for (auto found = tokens.globalMatch(json); found.hasNext();) {
        QString token = found.next().captured();
        const bool closes = token == QLatin1String("}") || token == QLatin1String("]");
        const bool opens = token == QLatin1String("{") || token == QLatin1String("[");
        depth += opens ? 1 : closes ? -1 : 0;
        if (token.startsWith(QLatin1Char('[')) && !opens)
            token.replace(comma, QStringLiteral(", "));
        lines += (closes ? lineBreak() : QString()) + token;
        if (opens || token == QLatin1String(","))
            lines += lineBreak();
        else if (token == QLatin1String(":"))
            lines += QLatin1Char(' ');
    }
    return lines;
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

QString compact(const QJsonValue &value)
{
    const QByteArray array = QJsonDocument(QJsonArray{value}).toJson(QJsonDocument::Compact);
    return QString::fromUtf8(array.mid(1, array.size() - 2));
}

QString readable(const QByteArray &message, int most)
{
    const QString text = QString::fromUtf8(message);
    if (!isText(message, text))
        return QString::fromLatin1(message.left(most).toHex(' '));
    QString line;
    for (const QChar character : text.leftRef(most))
        line += character.category() == QChar::Other_Control ? escaped(character) : QString(character);
    return line;
}

QString indented(const QByteArray &message)
{
    const QString text = QString::fromUtf8(message);
    if (!QJsonDocument::fromJson(message).isNull())
        return withLineBreaks(text.trimmed());
    const bool isPlain = isText(message, text) && !text.contains(QChar::Null);
    return isPlain ? text : readable(message);
}

} // namespace devhost
