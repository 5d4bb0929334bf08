#include "widgets/paint_tools.h"

#include <QPainter>
#include <QPen>

#include <algorithm>
#include <cmath>

namespace vm {

QColor mixed(const QColor &first, const QColor &second, double share)
{
    const auto between = [share](qreal from, qreal to) { return from + (to - from) * share; };
    return QColor::fromRgbF(between(first.redF(), second.redF()), between(first.greenF(), second.greenF()),
                            between(first.blueF(), second.blueF()), first.alphaF());
}

namespace {

double luminance(const QColor &color)
{
    const auto linear
        = [](double part) { return part <= 0.03928 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4); };
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) + 0.0722 * linear(color.blueF());
}

double contrast(const QColor &one, const QColor &other)
{
    const auto [darker, lighter] = std::minmax({luminance(one), luminance(other)});
    return (lighter + 0.05) / (darker + 0.05);
}

} // namespace

QColor seenOn(const QColor &ground, const QColor &color)
{
    const QColor far = luminance(ground) > 0.18 ? Qt::black : Qt::white;
    QColor mark = color;
    for (double share = 0.1; share < 1.0 && contrast(mark, ground) < 3.0; share += 0.1)
        mark = mixed(color, far, share);
    return mark;
}

QColor focusColor(const QPalette &palette)
{
    return seenOn(palette.color(QPalette::Active, QPalette::Window),
                  palette.color(QPalette::Active, QPalette::Link));
}

qreal snapped(qreal coordinate, qreal pixelRatio)
{
    return std::round(coordinate * pixelRatio) / pixelRatio;
}

QRectF sharpLine(qreal x, qreal y, qreal width, qreal pixels, qreal pixelRatio)
{
    const qreal height = std::max(1.0, std::round(pixels * pixelRatio)) / pixelRatio;
    return {x, snapped(y - height / 2.0, pixelRatio), width, height};
}

void paintFocusFrame(QPainter &painter, const QRectF &rect, const QColor &color)
{
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(color, 2.0));
    painter.setBrush(Qt::NoBrush);
    painter.drawRoundedRect(rect.adjusted(1.0, 1.0, -1.0, -1.0), 4.0, 4.0);
    painter.restore();
}

} // namespace vm
