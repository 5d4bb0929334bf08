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

void paintFace(QPainter &painter, const QRectF &circle, const DialState &state)
{
    const QColor face = faceColor(state.text);
    painter.setPen(Qt::NoPen);
    painter.setBrush(state.hovered ? mixed(face, state.text, 0.12) : face);
    painter.drawEllipse(circle);
}

void paintGauge(QPainter &painter, const QRectF &circle, const DialState &state)
{
    const double half = state.gauge / 2.0;
    const QRectF middleLine = circle.adjusted(half, half, -half, -half);
    const auto arc = [&](const QColor &color, double width, double share) {
        painter.setPen(QPen(color, width, Qt::SolidLine, Qt::FlatCap));
        painter.drawArc(middleLine, qRound(startAngle * 16), qRound(-sweep * share * 16));
    };
    arc(mixed(faceColor(state.text), state.base, 0.30), state.gauge, 1.0);
    if (state.share > 0.0)
        arc(state.accent, state.gauge, state.share);
}

/// Seen on the empty part of the gauge as well as on the filled one.
void paintTick(QPainter &painter, const QRectF &circle, const DialState &state)
{
    const double outer = circle.width() / 2.0;
    const QPointF middle = circle.center();
    painter.setPen(
        QPen(state.share > state.tick ? faceColor(state.text) : state.text, 1.6, Qt::SolidLine, Qt::FlatCap));
    painter.drawLine(pointAt(middle, outer - state.gauge, state.tick), pointAt(middle, outer, state.tick));
}

void paintPointer(QPainter &painter, const QRectF &circle, const DialState &state)
{
    const double outer = circle.width() / 2.0;
    const QPointF middle = circle.center();
    painter.setPen(QPen(state.text, 3.0, Qt::SolidLine, Qt::RoundCap));
    painter.drawLine(pointAt(middle, outer - state.gauge - 2.0, state.share),
                     pointAt(middle, outer - 1.0, state.share));
}

void paintDot(QPainter &painter, const QRectF &circle, const DialState &state)
{
    painter.setPen(Qt::NoPen);
    painter.setBrush(mixed(faceColor(state.text), state.text, 0.45));
    painter.drawEllipse(circle.center(), 3.0, 3.0);
}

void paintNumber(QPainter &painter, const QRectF &circle, const DialState &state)
{
    QFont font = state.font;
    const double radius = circle.width() / 2.0 - state.gauge - 1.0;
    const QFontMetricsF metrics(font, painter.device());
    const double halfHeight = metrics.capHeight() / 2.0;
    const double room = 2.0 * std::sqrt(std::max(1.0, radius * radius - halfHeight * halfHeight));
    const double width = metrics.horizontalAdvance(state.number);
    if (width > room)
        font.setPixelSize(std::max(1, int(QFontInfo(font).pixelSize() * room / width)));
    painter.setFont(font);
    painter.setPen(state.share > 0.0 ? state.text : mixed(state.text, faceColor(state.text), 0.25));
    painter.drawText(circle, Qt::AlignCenter, state.number);
}

} // namespace

void paintDial(QPainter &painter, const QRectF &rect, const DialState &state)
{
    const double side = std::min(rect.width(), rect.height()) - 2.0;
    QRectF circle(0.0, 0.0, side, side);
    circle.moveCenter(rect.center());
    painter.setRenderHint(QPainter::Antialiasing);
    const bool isClosed = state.share <= 0.0;
    if (isClosed && !state.hovered && !state.focused) {
        paintDot(painter, circle, state);
        return;
    }
    paintFace(painter, circle, state);
    paintGauge(painter, circle, state);
    paintTick(painter, circle, state);
    if (!isClosed)
        paintPointer(painter, circle, state);
    paintNumber(painter, circle, state);
    if (state.focused)
        paintFocusFrame(painter, rect, state.frame);
}

} // namespace vm
