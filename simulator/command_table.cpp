#include "simulator/command_table.h"

namespace sim {

void CommandTable::add(const QString &path, const Node &argument, const Action &action)
{
    m_commands.insert(path, {argument, action});
}

Outcome CommandTable::run(const QString &path, const QJsonValue &argument) const
{
    const auto command = m_commands.constFind(path);
    if (command == m_commands.constEnd())
        return Outcome::refuse(path, QStringLiteral("no such command"));
    Outcome checked = check(command->argument, path, {}, argument);
    if (!checked.accepted())
        return checked;
    const QString obstacle = command->action(checked.value);
    return obstacle.isEmpty() ? checked : Outcome::refuse(path, obstacle);
}

} // namespace sim
