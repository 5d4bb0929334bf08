#pragma once

#include <QColor>

/// The colours of the kinds of port, the same in diagram, strips and mixer, and that of a muted channel.
namespace color {

constexpr QRgb network = 0xffd3d8de;
constexpr QRgb usb = 0xff73caeb;
constexpr QRgb bluetooth = 0xff63e984;
constexpr QRgb voiceCue = 0xffe96363;
constexpr QRgb toneGenerator = 0xfff19185;

constexpr QRgb muted = 0xffc62828;

} // namespace color
