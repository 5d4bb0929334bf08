#pragma once

#include "devhost/tour/step.h"

/// The tour's steps, one function an area of the editor. Each leaves the editor open and live, except the
/// last. @p guide must outlive the steps.
namespace devhost::tour {

class Guide;

/// From the empty device list to an editor that has been live for two polls; identify and refresh.
Steps openSteps(Guide &guide);
/// The block diagram and the strip editors.
Steps dspSteps(Guide &guide);
/// The mixer with its tone generator, and the metering group; part of the diagram. The mixer's and the
/// network outputs' editors must be open.
Steps mixerSteps(Guide &guide);
/// Bluetooth, USB and voice cue settings.
Steps settingsSteps(Guide &guide);
/// The dialog in which phones are protected; part of the settings.
Steps prioritySteps(Guide &guide);
/// Snapshots and device presets.
Steps stateSteps(Guide &guide);
/// Voice cue uploads; part of the state.
Steps uploadSteps(Guide &guide);
/// Closes the editor with its own button.
Steps closeSteps(Guide &guide);

} // namespace devhost::tour
