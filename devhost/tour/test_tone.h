#pragma once

#include <QString>

namespace devhost::tour {

/// Writes a recording as the device wants it: RIFF WAVE, PCM, one channel, 16 kHz, 16 bits, a soft sine tone.
/// False when the file cannot be written.
bool writeTestTone(const QString &path, int seconds);

} // namespace devhost::tour
