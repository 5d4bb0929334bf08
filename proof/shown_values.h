#pragma once

#include <QStringList>

namespace proof {

class Station;

/// Compares every value that the station's windows show, in hidden fields and indicators as well, with what
/// the device itself holds now: a line for each that differs. Block windows count where they are open.
/// @p draft is what the user has typed as a Bluetooth name, which stays until it is applied.
QStringList differences(const Station &station, const QString &draft);

} // namespace proof
