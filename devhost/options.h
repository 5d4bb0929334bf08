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
    QString recordFile; ///< where the session is recorded; empty: not at once
    QString style; ///< "dark" or "light"; empty: as the user chose last
    QString tourFolder; ///< empty: no tour
    bool tourRealDevice = false; ///< the tour may change a device that this host did not start
};

struct ParsedOptions
{
    Options options;
    QString error; ///< a sentence for the user; empty when all is well
    QString help; ///< the help or version text, when it was asked for
};

/// @p arguments begins with the program's name.
ParsedOptions parseOptions(const QStringList &arguments);

} // namespace devhost
