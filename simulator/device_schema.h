#pragma once

#include "simulator/schema.h"

namespace sim {

/// The parameter tree of this model: everything that can be read, and within which limits it can be set.
/// Commands ("/control/...") are not part of it.
Node deviceSchema();

/// Number of entries that the list of paired phones can hold.
constexpr int pairedPhonesMost = 8;

/// Number of voice cues, preset slots.
constexpr int voiceCueCount = 4;
constexpr int presetSlotCount = 8;

/// Names under which recordings are replaced, in the order of the cues.
QStringList voiceCueIds();

} // namespace sim
