#pragma once

#include <QByteArray>
#include <QString>

namespace devhost::tour {

/// A recording as the device wants it: RIFF WAVE, PCM, one channel, 16 kHz, 16 bits, a soft sine tone.
QByteArray testTone(int seconds);

/// Writes it; false when the file cannot be written.
bool writeTestTone(const QString &path, int seconds);

} // namespace devhost::tour
