#pragma once

#include <QString>

#include <optional>

namespace sim {

/// The address that a dotted text names: four decimal parts from 0 to 255 and nothing else. The shorthand
/// forms that address parsers take ("10.1") are none.
std::optional<quint32> ipv4FromText(const QString &text);

/// 224.0.0.0 to 239.255.255.255 (RFC 5771).
bool isMulticastGroup(quint32 address);

/// Ones, then zeros.
bool isNetmask(quint32 address);

} // namespace sim
