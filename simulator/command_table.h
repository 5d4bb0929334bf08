#pragma once

#include "simulator/schema.h"

#include <QHash>

#include <functional>

namespace sim {

/// The commands of the device ("/control/..."): which argument each takes and what it does.
class CommandTable
{
public:
    /// Carries a command out and gives the reason when it cannot be done now, else an empty text.
    using Action = std::function<QString(const QJsonValue &)>;

    void add(const QString &path, const Node &argument, const Action &action);
    bool contains(const QString &path) const { return m_commands.contains(path); }
    Outcome run(const QString &path, const QJsonValue &argument) const;

private:
    struct Command
    {
        Node argument;
        Action action;
    };

    QHash<QString, Command> m_commands;
};

} // namespace sim
