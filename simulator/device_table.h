#pragma once

#include "simulator/identity.h"
#include "simulator/parameter_tree.h"

namespace sim {

/// Every path of this model: what it takes and what it holds as the device leaves the factory. The values of
/// "/control/..." are the arguments of commands.
std::vector<Row> deviceTable();

/// The parameters as the device of that name leaves the factory.
ParameterTree factoryTree(const Identity &identity);

/// Entries of the list of paired phones, voice cues, preset slots, as in the table.
constexpr int PairedPhonesMost = 8;
constexpr int VoiceCueCount = 4;
constexpr int PresetSlotCount = 8;

} // namespace sim
