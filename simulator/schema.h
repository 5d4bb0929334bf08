#pragma once

#include <QJsonValue>
#include <QStringList>
#include <QVector>

#include <vector>

namespace sim {

/// What became of a request: the value that the reply carries, or the words that say why it was refused.
struct Outcome
{
    QJsonValue value;
    QString refusal; ///< empty when the request was carried out

    bool accepted() const { return refusal.isEmpty(); }

    static Outcome accept(const QJsonValue &value) { return {value, {}}; }

    /// A refusal names the node first, so that a log line makes sense alone: "/system/usb/mode: ...".
    static Outcome refuse(const QString &path, const QString &reason)
    {
        return {{}, path + QStringLiteral(": ") + reason};
    }
};

/// What a node of the parameter tree may hold.
enum class Kind {
    Opaque, ///< anything; only the device writes it
    Bool, ///< true or false; 1 and 0 are taken too
    True, ///< the argument of a command that needs none
    Integer, ///< whole number from least to most
    Number, ///< as Integer, and also as a decimal text ("2")
    Level, ///< as Integer, and null for none
    Fraction, ///< any number from least to most
    Word, ///< one of the words
    Text, ///< least to most bytes of UTF-8
    Address, ///< dotted IPv4 address
    Netmask, ///< dotted IPv4 netmask
    Group, ///< dotted IPv4 multicast group (224.0.0.0/4)
    Object, ///< named members
    Array, ///< exactly most elements of one description
    List ///< up to most elements; a free entry reads as an empty object
};

/// What a leaf takes.
struct Type
{
    Kind kind;
    int least = 0;
    int most = 0;
    const char *words = ""; ///< of a Word, separated by blanks
};

/// One leaf of a tree as a table describes it.
struct Row
{
    /// Steps separated by "/"; "{4}" stands for the indices of an array of four, "{..8}" for those of a list
    /// of up to eight.
    const char *path;
    Type type;
    /// JSON; below an array either one value for all elements or an array with one each. Empty for none.
    const char *factory;
    const char *about = ""; ///< for the device guide
    bool settable = true; ///< from outside
};

/// One node of the tree that a table describes.
struct Node
{
    Kind kind = Kind::Object;
    bool settable = true; ///< a node with others below it: when all of them are
    int least = 0;
    int most = 0;
    QStringList names; ///< of an object's members, in the order of the children; of a word, the choice
    std::vector<Node> children; ///< an array and a list have one
    QJsonValue factory{QJsonValue::Undefined};
};

Node treeOf(const std::vector<Row> &table);

/// What a leaf takes, in words: "a whole number from -100 to 20".
QString takenBy(const Node &node);

/// What the nodes hold at first.
QJsonValue factoryContent(const Node &node, const QVector<int> &indices = {});

/// Checks a value offered for the node at `path`, which now holds `current`, and gives what the node is to
/// hold afterwards, in the node's own type: true for a mute offered as 1. Members that an object leaves out
/// stay as they are. The first thing that does not fit is the refusal.
Outcome check(const Node &node, const QString &path, const QJsonValue &current, const QJsonValue &offered);

} // namespace sim
