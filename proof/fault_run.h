#pragma once

#include "proof/bad_link.h"

#include <QStringList>

class PlexoPluginFactory;

namespace proof {

/// What one seed stands for.
struct FaultPlan
{
    quint32 seed = 0;
    LinkFaults faults;
    bool fromTheStart = false; ///< the faults meet the first query already
    bool hastyHost = false;
    bool gentle = false; ///< nothing is lost: what is shown must be right without Refresh
    enum Leaving { JustGo, CloseButton, FactoryReset } leaving = JustGo; ///< how the user ends
    QString firmware;
    int acts = 0; ///< of the user

    QString text() const;
};

FaultPlan planOf(quint32 seed);

/// A random user works on one device over a link with faults. Then the faults end, and everything must be in
/// order again: the channel alive, every value shown the device's, and every message of the user's sent once.
/// At last the user leaves.
/// Returns what was not; empty when all is well. @p patience is how many times slower than usual this build
/// is.
QStringList runWithFaults(PlexoPluginFactory *factory, const FaultPlan &plan, double patience);

} // namespace proof
