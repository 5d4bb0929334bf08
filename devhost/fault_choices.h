#pragma once

#include <QString>
#include <QStringList>
#include <QVector>

namespace devhost {

/// A way for a simulated device to misbehave, as offered in a menu.
struct FaultChoice
{
    QString text;
    QString tip;
    QStringList arguments; ///< for the simulator's command line; empty: it behaves
};

/// The first one is the device without faults.
QVector<FaultChoice> faultChoices();

} // namespace devhost
