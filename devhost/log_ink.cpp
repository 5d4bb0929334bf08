#include "devhost/log_ink.h"

#include <QGuiApplication>
#include <QPalette>

namespace devhost {

QColor colorOf(LogInk ink)
{
    struct Pair
    {
        QRgb onDark;
        QRgb onLight;
    };
    // In the order of LogInk.
    constexpr Pair colors[] = {
        {0xff8cc8ff, 0xff0b5394}, {0xff9be29b, 0xff2e6b2e}, {0xffb8b8b8, 0xff555555},
        {0xffe0d0a8, 0xff6b5412}, {0xffff9f07, 0xffa34700}, {0xffff8a80, 0xffb3261e},
        {0xffa3a9b0, 0xff5f6368}, {0xff513c28, 0xffffe3c7},
    };
    const bool isDark = QGuiApplication::palette().color(QPalette::Base).lightness() < 128;
    const Pair &pair = colors[int(ink)];
    return QColor(isDark ? pair.onDark : pair.onLight);
}

} // namespace devhost
