#pragma once

#include <QJsonValue>

namespace devhost::tour {

/// A value of the same shape in which everything that can be changed blindly is another one: every bool is
/// turned, every number is one lower (or higher near the lowest level), an address is given by DHCP or not.
QJsonValue otherValue(const QJsonValue &value);

} // namespace devhost::tour
