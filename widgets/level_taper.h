#pragma once

#include <QString>

/// The scale that fader and meter share: how far up its travel a level stands. "IEC-style": programme levels
/// get most of the travel, the quiet end is squeezed together.
namespace vm {

constexpr double lowestLevel = -100.0; ///< dB, the bottom of every fader, meter and dial
constexpr double highestLevel = 20.0; ///< dB, the top unless an owner chooses another

/// Share of the travel, 0 (bottom) to 1 (top), at which a level in dB stands on a scale that ends at
/// `highest` dB (above -100). Levels outside the scale stand at its ends.
double travelShare(double dB, double highest = highestLevel);

/// The level in dB at a share of the travel; the inverse of travelShare().
double levelAtShare(double share, double highest = highestLevel);

/// The whole decibel that is shown for a level; halves away from zero.
double wholeLevel(double dB);

/// "-12", "0" or "+3": the whole decibel that is shown, with its sign.
QString levelNumber(double dB);

/// "-12 dB", rounded to the whole decibel that is shown.
QString levelText(double dB);

} // namespace vm
