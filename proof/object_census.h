#pragma once

#include <QMap>
#include <QString>

/// Counts what a program holds, to tell whether it grows.
namespace proof {

/// Begins to count objects; before the first one whose going may be missed.
void beginCensus();

struct Census
{
    int objects = 0;
    int timers = 0; ///< running
    int descriptors = 0; ///< open files and sockets
    double residentMiB = 0;
    QMap<QString, int> classes; ///< objects of each
};

/// What there is now, after memory that is free has been given back.
Census takeCensus();

} // namespace proof
