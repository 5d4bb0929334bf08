#pragma once

#include "simulator/schema.h"

#include <QJsonObject>

namespace sim {

/// The device's parameters under their paths. Requests come in through get() and set(), which refuse what
/// does not fit; the device itself reads and writes with value() and put().
class ParameterTree
{
public:
    ParameterTree(const Node &schema, const QJsonObject &content);

    /// The node's content: a leaf, a section or any node between them.
    Outcome get(const QString &path) const;

    /// Checks `value` as a whole first: a refused set changes nothing. Gives the node's new content.
    Outcome set(const QString &path, const QJsonValue &value);

    /// Undefined where there is no such node.
    QJsonValue value(const QString &path) const;

    /// Unchecked. Does nothing where there is no such node.
    void put(const QString &path, const QJsonValue &value);

private:
    const Node *describe(const QStringList &steps) const;

    Node m_schema;
    QJsonValue m_root;
};

} // namespace sim
