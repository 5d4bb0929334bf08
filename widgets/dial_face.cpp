#include "widgets/dial_face.h"

#include "widgets/paint_tools.h"

#include <QFontMetricsF>
#include <QPainter>
#include <QtMath>

#include <algorithm>
#include <cmath>

namespace vm {

namespace {

constexpr double startAngle = 225.0; // degrees counter-clockwise from three o'clock
constexpr double sweep = 270.0; // degrees clockwise

double angleAt(double share)
{
    return startAngle - sweep * share;
}

QPointF pointAt(const QPointF &middle, double radius, double share)
{
    const double angle = qDegreesToRadians(angleAt(share));
    return middle + QPointF(std::cos(angle), -std::sin(angle)) * radius;
}

/// Dark behind a light number and light behind a dark one, so that it is readable on any window.
QColor faceColor(const QColor &text)
{
    return text.lightnessF() > 0.5 ? QColor(0x22, 0x25, 0x29) : QColor(0xf7, 0xf7, 0xf7);
}

void paintFace(QPainter &painter, const QRectF &circle, const DialLook &look)
{
    const QColor face = faceColor(look.text);
    painter.setPen(Qt::NoPen);
    painter.setBrush(look.hovered ? mixed(face, look.text, 0.12) : face);
    painter.drawEllipse(circle);
}

void paintGauge(QPainter &painter, const QRectF &circle, const DialLook &look)
{
    const double half = look.gauge / 2.0;
    const QRectF middleLine = circle.adjusted(half, half, -half, -half);
    const auto arc = [&](const QColor &color, double width, double share) {
        painter.setPen(QPen(color, width, Qt::SolidLine, Qt::FlatCap));
        painter.drawArc(middleLine, qRound(startAngle * 16), qRound(-sweep * share * 16));
    };
    arc(mixed(faceColor(look.text), look.base, 0.30), look.gauge, 1.0);
    if (look.share > 0.0)
        arc(look.accent, look.gauge, look.share);
}

void paintTick(QPainter &painter, const QRectF &circle, const DialLook &look)
{
    const double outer = circle.width() / 2.0;
    const QPointF middle = circle.center();
    painter.setPen(QPen(look.text, 1.6, Qt::SolidLine, Qt::FlatCap));
    painter.drawLine(pointAt(middle, outer - look.gauge, look.tick), pointAt(middle, outer, look.tick));
}

void paintPointer(QPainter &painter, const QRectF &circle, const DialLook &look)
{
    if (look.share <= 0.0)
        return;
    const double outer = circle.width() / 2.0;
    const QPointF middle = circle.center();
    painter.setPen(QPen(look.text, 2.4, Qt::SolidLine, Qt::RoundCap));
    painter.drawLine(pointAt(middle, outer - look.gauge - 1.0, look.share),
                     pointAt(middle, outer - 1.5, look.share));
}

void paintNumber(QPainter &painter, const QRectF &circle, const DialLook &look)
{
    QFont font = look.font;
    const double radius = circle.width() / 2.0 - look.gauge - 1.0;
    const QFontMetricsF metrics(font, painter.device());
    const double halfHeight = metrics.capHeight() / 2.0;
    const double room = 2.0 * std::sqrt(std::max(1.0, radius * radius - halfHeight * halfHeight));
    const double width = metrics.horizontalAdvance(look.number);
    if (width > room)
        font.setPixelSize(std::max(1, int(QFontInfo(font).pixelSize() * room / width)));
    painter.setFont(font);
    painter.setPen(look.share > 0.0 ? look.text : mixed(look.text, faceColor(look.text), 0.40));
    painter.drawText(circle, Qt::AlignCenter, look.number);
}

} // namespace

void paintDial(QPainter &painter, const QRectF &rect, const DialLook &look)
{
    const double side = std::min(rect.width(), rect.height()) - 2.0;
    QRectF circle(0.0, 0.0, side, side);
    circle.moveCenter(rect.center());
    painter.setRenderHint(QPainter::Antialiasing);
    paintFace(painter, circle, look);
    paintGauge(painter, circle, look);
    paintTick(painter, circle, look);
    paintPointer(painter, circle, look);
    paintNumber(painter, circle, look);
    if (look.focused)
        paintFocusFrame(painter, rect, look.accent);
}

} // namespace vm
