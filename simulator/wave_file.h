#pragma once

#include <QByteArray>
#include <QString>

namespace sim {

/// What the device found in a file that is to become a voice cue.
struct WaveCheck
{
    QString problem; ///< why it cannot be played; empty when it can
    int lengthMs = 0;
};

/// A voice cue is a RIFF WAVE file: PCM, one channel, 16 kHz, 16 bits a sample, at least one sample. Chunks
/// besides "fmt " and "data" are skipped.
WaveCheck checkWave(const QByteArray &file);

} // namespace sim
