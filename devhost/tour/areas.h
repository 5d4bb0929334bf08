#pragma once

#include "devhost/tour/step.h"

/// The tour's steps, one function an area of the editor. Each leaves the editor open and live, except those
/// that say otherwise. @p guide must outlive the steps.
namespace devhost::tour {

class Guide;

/// From the empty device list to an editor that has been live for two polls; identify and refresh.
Steps openSteps(Guide &guide);
/// The block diagram and the strip editors.
Steps dspSteps(Guide &guide);
/// The mixer with its tone generator; part of the diagram. The mixer's and the network outputs' editors must
/// be open.
Steps mixerSteps(Guide &guide);
/// The metering group; part of the diagram, with the tone on. No block editor is open.
Steps meteringSteps(Guide &guide);
/// What the settings' steps call the device over Bluetooth.
const QLatin1String NewName("Stage_KBX");

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

// What only a simulated device is put through

/// The host's own windows.
Steps hostSteps(Guide &guide);
/// Opens the editor of a device that answers.
Steps openAgainSteps(Guide &guide);
/// A change that the device refuses, and how the host tells.
Steps refusalSteps(Guide &guide);
/// How phones connect, and the end of it; needs a paired phone.
Steps connectionSteps(Guide &guide);
/// Forgets the phones that are not protected; part of the connection.
Steps clearPairingSteps(Guide &guide);
/// A device that does not answer, is lost and comes back, is reset and restarts, which closes the editor.
Steps lossSteps(Guide &guide);

} // namespace devhost::tour
