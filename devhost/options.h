#pragma once

#include <QString>
#include <QStringList>

namespace devhost {

/// What the command line asks for.
struct Options
{
    QStringList plugins; ///< plugin files; empty: the one beside the program
    QString interface; ///< empty: the host chooses
    int simulate = 0; ///< number of simulated devices
    QString snapshotFolder; ///< where the file dialogs begin; empty: the user's documents
    QString tourFolder; ///< empty: no tour
};

struct ParsedOptions
{
    Options options;
    QString error; ///< a sentence for the user; empty when all is well
    QString help; ///< the help text, when it was asked for
};

/// @p arguments begins with the program's name.
ParsedOptions parseOptions(const QStringList &arguments);

} // namespace devhost
