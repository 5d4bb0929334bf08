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
    painter.setPen(QPen(color, 1.0));
    painter.setBrush(Qt::NoBrush);
    painter.drawRoundedRect(rect.adjusted(0.5, 0.5, -0.5, -0.5), 3.0, 3.0);
    painter.restore();
}

} // namespace vm
