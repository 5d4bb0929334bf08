#include "simulator/schema.h"

#include "simulator/ipv4_text.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>

namespace sim {

namespace {

/// The child of @p parent that a step of a row's path names, made where it is new.
Node *childNamed(Node *parent, const QString &step)
{
    int index = 0;
    if (!step.startsWith(QLatin1Char('{'))) {
        index = parent->names.indexOf(step);
        if (index < 0) {
            index = parent->names.size();
            parent->names.append(step);
        }
    } else {
        const bool list = step.startsWith(QLatin1String("{.."));
        parent->kind = list ? Kind::List : Kind::Array;
        parent->most = step.mid(list ? 3 : 1, step.size() - (list ? 4 : 2)).toInt();
    }
    parent->children.resize(qMax(parent->children.size(), size_t(index) + 1));
    return &parent->children[size_t(index)];
}

void fill(Node *leaf, const Row &row)
{
    leaf->kind = row.type.kind;
    leaf->settable = row.settable;
    leaf->least = row.type.least;
    leaf->most = row.type.most;
    leaf->names = QString::fromLatin1(row.type.words).split(QLatin1Char(' '), Qt::SkipEmptyParts);
    const QByteArray factory(row.factory);
    if (!factory.isEmpty()) // in brackets, because Qt reads no JSON text that is a single value
        leaf->factory = QJsonDocument::fromJson('[' + factory + ']').array().at(0);
}

void settleAccess(Node *node)
{
    for (Node &child : node->children)
        settleAccess(&child);
    if (!node->children.empty())
        node->settable = std::all_of(node->children.cbegin(), node->children.cend(),
                                     [](const Node &child) { return child.settable; });
}

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

QString isNot(const QString &offered, const Node &node)
{
    return QStringLiteral("%1 is not %2").arg(offered, takenBy(node));
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
    if (!number || *number < node.least || *number > node.most)
        return Outcome::refuse(path, isNot(offered.toVariant().toString(), node));
    return Outcome::accept(*number);
}

Outcome checkNumber(const Node &node, const QString &path, const QJsonValue &offered)
{
    bool decimal = false;
    const int number = offered.toString().toInt(&decimal);
    return checkInteger(node, path, decimal ? QJsonValue(number) : offered);
}

Outcome checkFraction(const Node &node, const QString &path, const QJsonValue &offered)
{
    if (!offered.isDouble())
        return mismatch(path, QStringLiteral("a number"), offered);
    if (offered.toDouble() < node.least || offered.toDouble() > node.most)
        return Outcome::refuse(path, isNot(offered.toVariant().toString(), node));
    return Outcome::accept(offered);
}

Outcome checkWord(const Node &node, const QString &path, const QJsonValue &offered)
{
    if (!offered.isString())
        return mismatch(path, QStringLiteral("a word"), offered);
    if (!node.names.contains(offered.toString()))
        return Outcome::refuse(path, isNot(QLatin1Char('"') + offered.toString() + QLatin1Char('"'), node));
    return Outcome::accept(offered);
}

Outcome checkText(const Node &node, const QString &path, const QJsonValue &offered)
{
    if (!offered.isString())
        return mismatch(path, QStringLiteral("a text"), offered);
    const int bytes = offered.toString().toUtf8().size();
    if (bytes < node.least || bytes > node.most)
        return Outcome::refuse(path,
                               QStringLiteral("%1 bytes of text, %2 to %3 are possible")
                                   .arg(bytes)
                                   .arg(node.least)
                                   .arg(node.most));
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
    if (node.kind == Kind::Netmask && !isNetmask(*address))
        return Outcome::refuse(path, QStringLiteral("%1 is not a netmask").arg(text));
    if (node.kind == Kind::Group && !isMulticastGroup(*address))
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
    if (elements.size() != node.most)
        return Outcome::refuse(
            path, QStringLiteral("expected %1 entries, got %2").arg(node.most).arg(elements.size()));
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

Node treeOf(const std::vector<Row> &table)
{
    Node root;
    for (const Row &row : table) {
        Node *node = &root;
        for (const QString &step : QString::fromLatin1(row.path).split(QLatin1Char('/'), Qt::SkipEmptyParts))
            node = childNamed(node, step);
        fill(node, row);
    }
    settleAccess(&root);
    return root;
}

QString takenBy(const Node &node)
{
    const auto range = [&node](const char *what) {
        return QStringLiteral("%1 %2 to %3").arg(QLatin1String(what)).arg(node.least).arg(node.most);
    };
    switch (node.kind) {
    case Kind::Bool:
        return QStringLiteral("true or false");
    case Kind::True:
        return QStringLiteral("true");
    case Kind::Integer:
    case Kind::Number:
    case Kind::Level:
        return range("a whole number from");
    case Kind::Fraction:
        return range("a number from");
    case Kind::Word:
        return QStringLiteral("one of ") + node.names.join(QStringLiteral(", "));
    case Kind::Text:
        return node.most == 0 ? QStringLiteral("a text")
                              : range("a text whose UTF-8 has") + QStringLiteral(" bytes");
    case Kind::Address:
        return QStringLiteral("a dotted IPv4 address");
    case Kind::Netmask:
        return QStringLiteral("a dotted netmask");
    case Kind::Group:
        return QStringLiteral("a dotted multicast group");
    default:
        return {};
    }
}

QJsonValue factoryContent(const Node &node, const QVector<int> &indices)
{
    if (node.kind == Kind::Object) {
        QJsonObject object;
        for (int member = 0; member < node.names.size(); ++member)
            object.insert(node.names.at(member), factoryContent(node.children[size_t(member)], indices));
        return object;
    }
    QJsonArray array;
    if (node.kind == Kind::List)
        return array;
    if (node.kind == Kind::Array) {
        for (int i = 0; i < node.most; ++i)
            array.append(factoryContent(node.children.front(), indices + QVector<int>{i}));
        return array;
    }
    QJsonValue value = node.factory;
    for (const int index : indices)
        value = value.isArray() ? value.toArray().at(index) : value;
    return value;
}

Outcome check(const Node &node, const QString &path, const QJsonValue &current, const QJsonValue &offered)
{
    if (!node.settable)
        return Outcome::refuse(path, QStringLiteral("read-only"));
    switch (node.kind) {
    case Kind::Bool:
        return checkBool(path, offered);
    case Kind::True:
        return checkTrue(path, offered);
    case Kind::Integer:
        return checkInteger(node, path, offered);
    case Kind::Number:
        return checkNumber(node, path, offered);
    case Kind::Level:
        return offered.isNull() ? Outcome::accept(offered) : checkInteger(node, path, offered);
    case Kind::Fraction:
        return checkFraction(node, path, offered);
    case Kind::Word:
        return checkWord(node, path, offered);
    case Kind::Text:
        return checkText(node, path, offered);
    case Kind::Address:
    case Kind::Netmask:
    case Kind::Group:
        return checkIpv4(node, path, offered);
    case Kind::Object:
        return checkObject(node, path, current, offered);
    case Kind::Array:
        return checkArray(node, path, current, offered);
    case Kind::Opaque:
    case Kind::List:
        break;
    }
    return Outcome::refuse(path, QStringLiteral("read-only"));
}

} // namespace sim
