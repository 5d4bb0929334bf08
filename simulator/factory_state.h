#pragma once

#include "simulator/identity.h"

#include <QJsonObject>

namespace sim {

/// The content of the whole parameter tree as the device leaves the factory.
QJsonObject factoryState(const Identity &identity);

} // namespace sim
