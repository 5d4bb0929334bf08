#include "simulator/parameter_tree.h"

#include <QJsonArray>
#include <QJsonObject>

#include <optional>

namespace sim {

namespace {

/// "/system/usb" as its components; nothing for a text that is no path ("", "/", "system", "/system/").
std::optional<QStringList> stepsOf(const QString &path)
{
    if (!path.startsWith(QLatin1Char('/')))
        return std::nullopt;
    const QStringList steps = path.mid(1).split(QLatin1Char('/'));
    if (steps.contains(QString()))
        return std::nullopt;
    return steps;
}

/// The array index that a step spells, in decimal without leading zeros; -1 for anything else.
int indexOf(const QString &step)
{
    bool decimal = false;
    const int index = step.toInt(&decimal);
    return decimal && index >= 0 && QString::number(index) == step ? index : -1;
}

QJsonValue childOf(const QJsonValue &parent, const QString &step)
{
    if (parent.isObject())
        return parent.toObject().value(step);
    const QJsonArray array = parent.toArray();
    const int index = indexOf(step);
    return index >= 0 && index < array.size() ? array.at(index) : QJsonValue(QJsonValue::Undefined);
}

QJsonValue follow(QJsonValue node, const QStringList &steps)
{
    for (const QString &step : steps)
        node = childOf(node, step);
    return node;
}

QJsonValue replaced(const QJsonValue &node, const QStringList &steps, const QJsonValue &value)
{
    if (steps.isEmpty())
        return value;
    const QString &step = steps.first();
    const QJsonValue child = replaced(childOf(node, step), steps.mid(1), value);
    if (node.isObject()) {
        QJsonObject object = node.toObject();
        object.insert(step, child);
        return object;
    }
    QJsonArray array = node.toArray();
    array.replace(indexOf(step), child);
    return array;
}

bool holdsElements(const Node &node)
{
    return node.kind == Kind::Array || node.kind == Kind::List;
}

/// Null below an opaque node and where the description does not go.
const Node *described(const Node *node, const QStringList &steps)
{
    for (const QString &step : steps) {
        const int member = node->kind == Kind::Object ? node->names.indexOf(step) : -1;
        const int element = holdsElements(*node) ? indexOf(step) : -1;
        if (member >= 0)
            node = &node->children[size_t(member)];
        else if (element >= 0 && element < node->most)
            node = &node->children.front();
        else
            return nullptr;
    }
    return node;
}

Outcome unknown(const QString &path)
{
    return Outcome::refuse(path, QStringLiteral("no such parameter"));
}

} // namespace

ParameterTree::ParameterTree(const Node &schema)
    : m_schema(schema)
    , m_root(factoryContent(schema))
{
}

const Node *ParameterTree::describe(const QString &path) const
{
    const std::optional<QStringList> steps = stepsOf(path);
    return steps ? described(&m_schema, *steps) : nullptr;
}

Outcome ParameterTree::get(const QString &path) const
{
    const std::optional<QStringList> steps = stepsOf(path);
    if (!steps)
        return unknown(path);
    const QJsonValue content = follow(m_root, *steps);
    if (!content.isUndefined())
        return Outcome::accept(content);
    const Node *parent = described(&m_schema, steps->mid(0, steps->size() - 1));
    const bool freeEntry = parent && parent->kind == Kind::List && described(parent, {steps->last()});
    return freeEntry ? Outcome::accept(QJsonObject()) : unknown(path);
}

Outcome ParameterTree::set(const QString &path, const QJsonValue &value)
{
    const std::optional<QStringList> steps = stepsOf(path);
    const QJsonValue current = steps ? follow(m_root, *steps) : QJsonValue(QJsonValue::Undefined);
    if (current.isUndefined())
        return unknown(path);
    const Node *node = described(&m_schema, *steps);
    if (!node)
        return Outcome::refuse(path, QStringLiteral("read-only"));
    Outcome outcome = check(*node, path, current, value);
    if (outcome.accepted())
        m_root = replaced(m_root, *steps, outcome.value);
    return outcome;
}

QJsonValue ParameterTree::value(const QString &path) const
{
    const std::optional<QStringList> steps = stepsOf(path);
    return steps ? follow(m_root, *steps) : QJsonValue(QJsonValue::Undefined);
}

void ParameterTree::put(const QString &path, const QJsonValue &value)
{
    const std::optional<QStringList> steps = stepsOf(path);
    if (steps && !follow(m_root, *steps).isUndefined())
        m_root = replaced(m_root, *steps, value);
}

} // namespace sim
