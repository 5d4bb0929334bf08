#pragma once

#include <QJsonObject>

// The mixer's section cache: its "value" is an array of sinks, each an array of whole levels in dB, one per
// source: value[sink][source].

constexpr int mixerSources = 10;
constexpr int mixerSinks = 7;

/// The lowest level of a crosspoint, in dB: nothing passes.
constexpr int mixerLowestLevel = -100;

/// A level as it is stored and sent: rounded to the nearest whole dB, halves up (2.5 gives 3, -2.5 gives
/// -2). Values that no int can hold end at plus or minus 1e9.
int roundedLevel(double dB);

/// Writes one crosspoint and leaves all others as they read before: entries that had to be added read as 0.
/// False, with nothing changed, for indices outside the mixer.
bool storeCrosspoint(QJsonObject &section, int source, int sink, int level);
