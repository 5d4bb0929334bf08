#pragma once

#include "simulator/levels.h"
#include "simulator/parameter_tree.h"

namespace sim {

/// The audio settings as the parameter tree holds them now. The tone generator has no strip of its own:
/// its source passes unchanged.
Desk deskOf(const ParameterTree &tree);

} // namespace sim
