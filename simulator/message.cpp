#include "simulator/message.h"

#include <QJsonDocument>
#include <QJsonObject>

namespace sim {

namespace {

Request bad(const QString &why, const QString &path = {})
{
    return {Request::Kind::Bad, path, {}, why};
}

Request parseJson(const QByteArray &bytes)
{
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(bytes, &error);
    if (error.error != QJsonParseError::NoError)
        return bad(QStringLiteral("no JSON: %1 at byte %2").arg(error.errorString()).arg(error.offset));
    const QJsonObject object = document.object();
    const QJsonValue get = object.value(QStringLiteral("get"));
    const QJsonValue set = object.value(QStringLiteral("set"));
    if (get.isUndefined() == set.isUndefined())
        return bad(QStringLiteral("no request: expected one of \"get\" and \"set\""));
    if (!get.isString() && !set.isString())
        return bad(QStringLiteral("no request: the path is not a text"));
    if (get.isString())
        return {Request::Kind::Get, get.toString(), {}, {}};
    const QJsonValue value = object.value(QStringLiteral("value"));
    if (value.isUndefined())
        return bad(QStringLiteral("no request: a set needs a \"value\""), set.toString());
    return {Request::Kind::Set, set.toString(), value, {}};
}

} // namespace

Request parseRequest(const QByteArray &bytes)
{
    const QByteArray trimmed = bytes.trimmed();
    if (trimmed.startsWith('{'))
        return parseJson(trimmed);
    return {Request::Kind::Text, {}, {}, QString::fromLatin1(trimmed)};
}

QString commandWord(Request::Kind kind)
{
    switch (kind) {
    case Request::Kind::Get:
        return QStringLiteral("get");
    case Request::Kind::Set:
        return QStringLiteral("set");
    default:
        return {};
    }
}

QByteArray replyBytes(const Request &request, const Outcome &outcome)
{
    QJsonObject reply{
        {QStringLiteral("cmd"), commandWord(request.kind)},
        {QStringLiteral("param"), request.path},
        {QStringLiteral("result"), outcome.accepted() ? QStringLiteral("OK") : outcome.refusal}};
    if (outcome.accepted())
        reply.insert(QStringLiteral("value"), outcome.value);
    return QJsonDocument(reply).toJson(QJsonDocument::Compact);
}

} // namespace sim
