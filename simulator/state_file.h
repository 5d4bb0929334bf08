#pragma once

#include <QJsonObject>
#include <QString>

namespace sim {

/// What came of reading a state file.
struct StateRead
{
    QJsonObject state; ///< empty for a file that does not exist yet
    QString error; ///< why the file cannot be used; empty when all is well
};

StateRead readState(const QString &file);

/// Replaces the file as a whole or not at all. An empty text, or why it could not be written.
QString writeState(const QString &file, const QJsonObject &state);

} // namespace sim
