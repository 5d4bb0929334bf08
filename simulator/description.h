#pragma once

#include <QString>

namespace sim {

/// The tables of the device guide, in Markdown: every path with what it takes, what it holds as the device
/// leaves the factory, and what it is.
QString deviceDescription();

} // namespace sim
