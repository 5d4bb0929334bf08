#pragma once

#include <QString>

namespace devhost {

/// Whether plugins can serve files to devices on UDP port 69, found out by opening it for a moment.
/// The answer is empty, or sentences that say what stands in the way and which command removes it.
QString uploadPortProblem();

/// The same for any port and what the system said about it; empty @p reason: the port is free.
QString uploadPortAdvice(quint16 port, bool forbidden, const QString &reason);

} // namespace devhost
