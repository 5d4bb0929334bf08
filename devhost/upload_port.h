#pragma once

#include <QString>

namespace devhost {

/// Whether plugins can serve files to devices on UDP port 69, found out by opening it for a moment.
/// The answer is empty, or sentences that say what stands in the way and which command removes it.
QString uploadPortProblem();

} // namespace devhost
