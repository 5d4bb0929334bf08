#pragma once

namespace devhost {

/// Gives the whole application the dark style sheet, and a palette for what no style sheet reaches.
void wearDarkLook();

} // namespace devhost
