#pragma once

#include <QByteArray>
#include <QJsonValue>
#include <QString>

#include <climits>

namespace devhost {

// What the host reads of messages for its own displays. It passes them on unread.

/// A request: {"get":"/path"}, {"set":"/path","value":...}, or a plain command such as "LOAD 3".
struct RequestText
{
    QString command; ///< "get" or "set"; of a plain command its first word; empty when it is neither
    QString path; ///< empty for plain commands
    QJsonValue value;
};

enum class Verdict { Confirmed, Refused, Unreadable };

struct ReplyText
{
    Verdict verdict = Verdict::Unreadable;
    QString command; ///< as in the request; empty when the reply does not say
    QString path;
    QString reason; ///< why it was refused, in the device's words
    QJsonValue value = QJsonValue::Undefined; ///< undefined when the reply has none
};

RequestText readRequest(const QByteArray &message);
/// Anything that is no JSON object is read as a plain answer, "ACK ..." or "NACK ...".
ReplyText readReply(const QByteArray &message);

/// A value as JSON without blanks.
QString compact(const QJsonValue &value);
/// In one line: control characters as in C, bytes that are no UTF-8 text as hexadecimal numbers. Of a long
/// message no more than @p most characters are looked at.
QString readable(const QByteArray &message, int most = INT_MAX);
/// As indented JSON where it is JSON, else line by line as it is.
QString indented(const QByteArray &message);

} // namespace devhost
