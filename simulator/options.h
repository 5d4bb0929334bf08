#pragma once

#include <QHostAddress>
#include <QJsonObject>
#include <QStringList>

namespace sim {

/// What the command line asks for.
struct Options
{
    QString name = QStringLiteral("KBX-0001");
    QHostAddress address{QHostAddress::LocalHost};
    QString interface; ///< by name; the loopback interface when empty
    quint16 port = 47800; ///< 0: any free one
    QString stateFile; ///< none when empty
    QString replay; ///< recording to answer from; none when empty
    QString replayed; ///< name of the device in it; the first one when empty
    QString keepUpload; ///< file that receives each fetched file as it came; none when empty
    quint32 seed = 1;
    bool exitWithParent = false;
    uint parent = 0; ///< process id of the parent; 0: whoever is it at the start
    bool orders = false; ///< taken from the standard input
    QJsonObject faults; ///< the fault options under their names, checked; those left out are off
};

struct ParsedOptions
{
    Options options;
    QString error; ///< a sentence for the user; empty when all is well
    QString help; ///< what to print instead of running: the help, or the description
};

/// `arguments` begins with the program's name.
ParsedOptions parseOptions(const QStringList &arguments);

} // namespace sim
