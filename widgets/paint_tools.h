#pragma once

#include <QColor>
#include <QPalette>
#include <QRectF>
#include <QtGlobal>

class QPainter;
class QWidget;

namespace vm {

/// `share` (0 to 1) of the second colour mixed into the first; the first one's opacity stays.
QColor mixed(const QColor &first, const QColor &second, double share);

/// The colour, mixed with black or white until a mark of it is seen on the ground: a contrast of 3 : 1, as
/// the Web Content Accessibility Guidelines (WCAG 2.1, 1.4.11) count it.
QColor seenOn(const QColor &ground, const QColor &color);

/// A logical coordinate moved to the nearest edge of a device pixel, so that lines stay sharp at any scale.
qreal snapped(qreal coordinate, qreal pixelRatio);

/// A line in device pixels: `pixels` logical pixels high (at least one device pixel), its upper edge snapped.
QRectF sharpLine(qreal x, qreal y, qreal width, qreal pixels, qreal pixelRatio);

/// The colour around what has the keyboard: the palette's for links, seen on its window's.
QColor focusColor(const QPalette &palette);

/// A frame of two pixels just inside the rectangle, for the keyboard focus.
void paintFocusFrame(QPainter &painter, const QRectF &rect, const QColor &color);

} // namespace vm
