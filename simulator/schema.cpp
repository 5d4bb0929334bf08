#include "simulator/schema.h"

#include "simulator/ipv4_text.h"

#include <QJsonArray>
#include <QJsonObject>

#include <cmath>
#include <limits>
#include <optional>

namespace sim {

namespace node {

Node opaque()
{
    return readOnly({});
}

static Node ofKind(Node::Kind kind, int min = 0, int max = 0)
{
    Node node;
    node.kind = kind;
    node.min = min;
    node.max = max;
    return node;
}

Node boolean()
{
    return ofKind(Node::Kind::Bool);
}
Node trueOnly()
{
    return ofKind(Node::Kind::True);
}
Node integer(int min, int max)
{
    return ofKind(Node::Kind::Integer, min, max);
}
Node number(int min, int max)
{
    return ofKind(Node::Kind::Number, min, max);
}
Node text(int minBytes, int maxBytes)
{
    return ofKind(Node::Kind::Text, minBytes, maxBytes);
}
Node address()
{
    return ofKind(Node::Kind::Address);
}
Node netmask()
{
    return ofKind(Node::Kind::Netmask);
}
Node group()
{
    return ofKind(Node::Kind::Group);
}

Node word(const QStringList &words)
{
    Node node = ofKind(Node::Kind::Word);
    node.names = words;
    return node;
}

Node object(const std::vector<std::pair<QString, Node>> &members)
{
    Node node = ofKind(Node::Kind::Object);
    for (const auto &member : members) {
        node.names.append(member.first);
        node.children.push_back(member.second);
    }
    return node;
}

Node array(int count, const Node &element)
{
    Node node = ofKind(Node::Kind::Array, count, count);
    node.children.push_back(element);
    return node;
}

Node list(int most, const Node &element)
{
    Node node = ofKind(Node::Kind::List, 0, most);
    node.children.push_back(element);
    return readOnly(node);
}

Node readOnly(Node node)
{
    node.settable = false;
    return node;
}

} // namespace node

namespace {

QString typeName(const QJsonValue &value)
{
    switch (value.type()) {
    case QJsonValue::Bool:
        return QStringLiteral("a boolean");
    case QJsonValue::Double:
        return QStringLiteral("a number");
    case QJsonValue::String:
        return QStringLiteral("a text");
    case QJsonValue::Array:
        return QStringLiteral("an array");
    case QJsonValue::Object:
        return QStringLiteral("an object");
    default:
        return QStringLiteral("nothing");
    }
}

Outcome mismatch(const QString &path, const QString &expected, const QJsonValue &offered)
{
    return Outcome::refuse(path, QStringLiteral("expected %1, got %2").arg(expected, typeName(offered)));
}

std::optional<int> wholeNumber(const QJsonValue &value)
{
    const double number = value.toDouble(std::numeric_limits<double>::quiet_NaN());
    if (!(std::abs(number) <= std::numeric_limits<int>::max()) || number != std::floor(number))
        return std::nullopt;
    return int(number);
}

Outcome checkBool(const QString &path, const QJsonValue &offered)
{
    if (offered.isBool())
        return Outcome::accept(offered);
    const std::optional<int> number = wholeNumber(offered);
    if (number && (*number == 0 || *number == 1))
        return Outcome::accept(*number == 1);
    return mismatch(path, QStringLiteral("true or false"), offered);
}

Outcome checkTrue(const QString &path, const QJsonValue &offered)
{
    Outcome outcome = checkBool(path, offered);
    if (outcome.accepted() && !outcome.value.toBool())
        return Outcome::refuse(path, QStringLiteral("expected true"));
    return outcome;
}

Outcome checkInteger(const Node &node, const QString &path, const QJsonValue &offered)
{
    const std::optional<int> number = wholeNumber(offered);
    if (!offered.isDouble())
        return mismatch(path, QStringLiteral("a whole number"), offered);
    if (!number || *number < node.min || *number > node.max)
        return Outcome::refuse(path,
                               QStringLiteral("%1 is not a whole number from %2 to %3")
                                   .arg(offered.toVariant().toString())
                                   .arg(node.min)
                                   .arg(node.max));
    return Outcome::accept(*number);
}

Outcome checkNumber(const Node &node, const QString &path, const QJsonValue &offered)
{
    bool decimal = false;
    const int number = offered.toString().toInt(&decimal);
    return checkInteger(node, path, decimal ? QJsonValue(number) : offered);
}

Outcome checkWord(const Node &node, const QString &path, const QJsonValue &offered)
{
    if (!offered.isString())
        return mismatch(path, QStringLiteral("a word"), offered);
    if (!node.names.contains(offered.toString()))
        return Outcome::refuse(path,
                               QStringLiteral("\"%1\" is not one of %2")
                                   .arg(offered.toString(), node.names.join(QStringLiteral(", "))));
    return Outcome::accept(offered);
}

Outcome checkText(const Node &node, const QString &path, const QJsonValue &offered)
{
    if (!offered.isString())
        return mismatch(path, QStringLiteral("a text"), offered);
    const int bytes = offered.toString().toUtf8().size();
    if (bytes < node.min || bytes > node.max)
        return Outcome::refuse(
            path,
            QStringLiteral("%1 bytes of text, %2 to %3 are possible").arg(bytes).arg(node.min).arg(node.max));
    return Outcome::accept(offered);
}

Outcome checkIpv4(const Node &node, const QString &path, const QJsonValue &offered)
{
    if (!offered.isString())
        return mismatch(path, QStringLiteral("a dotted address"), offered);
    const QString text = offered.toString();
    const std::optional<quint32> address = ipv4FromText(text);
    if (!address)
        return Outcome::refuse(path, QStringLiteral("\"%1\" is not a dotted IPv4 address").arg(text));
    if (node.kind == Node::Kind::Netmask && !isNetmask(*address))
        return Outcome::refuse(path, QStringLiteral("%1 is not a netmask").arg(text));
    if (node.kind == Node::Kind::Group && !isMulticastGroup(*address))
        return Outcome::refuse(path, QStringLiteral("%1 is not a multicast group").arg(text));
    return Outcome::accept(offered);
}

Outcome checkObject(const Node &node, const QString &path, const QJsonValue &current,
                    const QJsonValue &offered)
{
    if (!offered.isObject())
        return mismatch(path, QStringLiteral("an object"), offered);
    QJsonObject result = current.toObject();
    const QJsonObject members = offered.toObject();
    for (auto member = members.begin(); member != members.end(); ++member) {
        const int index = node.names.indexOf(member.key());
        if (index < 0)
            return Outcome::refuse(path, QStringLiteral("no member \"%1\"").arg(member.key()));
        Outcome outcome = check(node.children[size_t(index)], path + QLatin1Char('/') + member.key(),
                                result.value(member.key()), member.value());
        if (!outcome.accepted())
            return outcome;
        result.insert(member.key(), outcome.value);
    }
    return Outcome::accept(result);
}

Outcome checkArray(const Node &node, const QString &path, const QJsonValue &current,
                   const QJsonValue &offered)
{
    if (!offered.isArray())
        return mismatch(path, QStringLiteral("an array"), offered);
    const QJsonArray elements = offered.toArray();
    if (elements.size() != node.max)
        return Outcome::refuse(
            path, QStringLiteral("expected %1 entries, got %2").arg(node.max).arg(elements.size()));
    QJsonArray result;
    for (int i = 0; i < elements.size(); ++i) {
        Outcome outcome = check(node.children.front(), path + QLatin1Char('/') + QString::number(i),
                                current.toArray().at(i), elements.at(i));
        if (!outcome.accepted())
            return outcome;
        result.append(outcome.value);
    }
    return Outcome::accept(result);
}

} // namespace

Outcome check(const Node &node, const QString &path, const QJsonValue &current, const QJsonValue &offered)
{
    if (!node.settable)
        return Outcome::refuse(path, QStringLiteral("read-only"));
    switch (node.kind) {
    case Node::Kind::Bool:
        return checkBool(path, offered);
    case Node::Kind::True:
        return checkTrue(path, offered);
    case Node::Kind::Integer:
        return checkInteger(node, path, offered);
    case Node::Kind::Number:
        return checkNumber(node, path, offered);
    case Node::Kind::Word:
        return checkWord(node, path, offered);
    case Node::Kind::Text:
        return checkText(node, path, offered);
    case Node::Kind::Address:
    case Node::Kind::Netmask:
    case Node::Kind::Group:
        return checkIpv4(node, path, offered);
    case Node::Kind::Object:
        return checkObject(node, path, current, offered);
    case Node::Kind::Array:
        return checkArray(node, path, current, offered);
    case Node::Kind::Opaque:
    case Node::Kind::List:
        break;
    }
    return Outcome::refuse(path, QStringLiteral("read-only"));
}

} // namespace sim
