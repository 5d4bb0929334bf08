#pragma once

#include <QIcon>

namespace devhost {

enum class Picture { Open, Close, Save, Load, Store, Recall, Faults, Refused };

/// A picture in the colour of the texts around it, drawn anew for every size and style, so that it is sharp
/// on any screen.
QIcon drawnIcon(Picture picture);

} // namespace devhost
