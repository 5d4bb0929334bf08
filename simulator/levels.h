#pragma once

#include <QByteArray>
#include <QJsonObject>

#include <array>
#include <optional>

namespace sim {

constexpr int SourceCount = 10; ///< network 0-3, USB 4-5, Bluetooth 6-7, voice cue 8, tone generator 9
constexpr int SinkCount = 7; ///< network 0-3, USB 4-5, Bluetooth 6

constexpr double SilenceDb = -100.0; ///< the lowest level; a crosspoint at it is off
constexpr double FullDb = 20.0; ///< the highest level that is reported

/// Levels before the input strips, in dB.
using SourceLevels = std::array<double, SourceCount>;

/// Gain in dB; a limited strip passes nothing louder than its threshold.
struct Strip
{
    double gain = 0;
    bool mute = false;
    bool limited = false;
    double threshold = 0;
    std::optional<double> pushed = std::nullopt; ///< dB; the strip shows and passes this whatever it is fed
};

/// The audio settings of the device that its levels follow from.
struct Desk
{
    std::array<Strip, SourceCount> inputs;
    std::array<Strip, SinkCount> outputs;
    std::array<std::array<double, SourceCount>, SinkCount> mixer; ///< dB, [sink][source]
};

/// The audio settings as "/preset/dsp" holds them, and per section and channel the levels that are pushed,
/// null for none. The tone generator has no strip of its own: its source passes unchanged.
Desk deskOf(const QJsonObject &dsp, const QJsonObject &pushed);

/// Levels behind the input and the output strips, in dB, SilenceDb to FullDb.
struct Levels
{
    std::array<double, SourceCount> inputs;
    std::array<double, SinkCount> outputs;
};

/// Each input passes its strip; each sink adds up the powers that its open crosspoints let through (the
/// sources are independent of each other) and passes its own strip.
Levels computeLevels(const Desk &desk, const SourceLevels &sources);

/// The 19 bytes of a level datagram: 0x81, two bytes for later use, then signed dB of network receive 1-4,
/// USB playback 1-2, Bluetooth in 1-2, voice cue, network transmit 1-4, USB record 1-2, Bluetooth out.
QByteArray levelDatagram(const Levels &levels);

} // namespace sim
