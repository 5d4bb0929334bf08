#pragma once

#include "simulator/outcome.h"

#include <QStringList>

#include <utility>
#include <vector>

namespace sim {

/// Describes one node of the parameter tree: what it may hold and whether it may be set from outside.
struct Node
{
    enum class Kind {
        Opaque, ///< the device's own report, never set
        Bool, ///< true or false; 1 and 0 are taken too
        True, ///< the argument of a command that needs none
        Integer, ///< whole number from min to max
        Number, ///< as Integer, and also as a decimal text ("2")
        Word, ///< one of names
        Text, ///< min to max bytes of UTF-8
        Address, ///< dotted IPv4 address
        Netmask, ///< dotted IPv4 netmask
        Group, ///< dotted IPv4 multicast group (224.0.0.0/4)
        Object, ///< members called names, described by children
        Array, ///< exactly max elements, described by children.front()
        List ///< up to max elements; a free entry reads as an empty object
    };

    Kind kind = Kind::Opaque;
    bool settable = true;
    int min = 0;
    int max = 0;
    QStringList names;
    std::vector<Node> children;
};

namespace node {
Node opaque();
Node boolean();
Node trueOnly();
Node integer(int min, int max);
Node number(int min, int max);
Node word(const QStringList &words);
Node text(int minBytes, int maxBytes);
Node address();
Node netmask();
Node group();
Node object(const std::vector<std::pair<QString, Node>> &members);
Node array(int count, const Node &element);
Node list(int most, const Node &element);
Node readOnly(Node node);
} // namespace node

/// Checks a value offered for the node at `path`, which now holds `current`, and gives what the node is to
/// hold afterwards, in the node's own type: true for a mute offered as 1. Members that an object leaves out
/// stay as they are. The first thing that does not fit is the refusal.
Outcome check(const Node &node, const QString &path, const QJsonValue &current, const QJsonValue &offered);

} // namespace sim
