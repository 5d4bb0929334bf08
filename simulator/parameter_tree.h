#pragma once

#include "simulator/schema.h"

namespace sim {

/// The device's parameters under their paths. Requests come in through get() and set(), which refuse what
/// does not fit; the device itself reads and writes with value() and put().
class ParameterTree
{
public:
    /// A tree with its first content.
    explicit ParameterTree(const Node &schema);

    /// The node's content: a leaf, a section or any node between them.
    Outcome get(const QString &path) const;

    /// Checks `value` as a whole first: a refused set changes nothing. Gives the node's new content.
    Outcome set(const QString &path, const QJsonValue &value);

    /// Undefined where there is no such node.
    QJsonValue value(const QString &path) const;

    /// Unchecked. Does nothing where there is no such node.
    void put(const QString &path, const QJsonValue &value);

    /// What the table says of a node; null for one that it does not have.
    const Node *describe(const QString &path) const;

private:
    Node m_schema;
    QJsonValue m_root;
};

} // namespace sim
