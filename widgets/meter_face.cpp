#include "widgets/meter_face.h"

#include "widgets/level_taper.h"
#include "widgets/paint_tools.h"

#include <QPainter>

#include <algorithm>
#include <array>

namespace vm {

namespace {

struct Zone
{
    double from; // dB
    double to;
    QRgb color;
};

constexpr std::array<Zone, 3> zones{
    {{lowestLevel, -20.0, 0xff2fbf6b}, {-20.0, -9.0, 0xfff2c32c}, {-9.0, 1000.0, 0xfff0443a}}};
constexpr std::array<double, 6> notches{-50.0, -40.0, -30.0, -10.0, 0.0, 10.0};
constexpr QRgb well = 0xff14171a;
constexpr QRgb clipColor = 0xffff3b30;
constexpr int peakHeight = 2; // px

QColor zoneColor(const Zone &zone, bool lit, bool enabled)
{
    QColor color(zone.color);
    if (!enabled)
        color = QColor::fromHsv(0, 0, qGray(color.rgb()));
    return lit ? color : mixed(QColor(well), color, enabled ? 0.16 : 0.10);
}

/// Device pixels above the bottom of the travel, as a rectangle in logical coordinates.
QRectF slice(const QRect &travel, qreal pixelRatio, int from, int to)
{
    const qreal bottom = travel.y() + travel.height();
    return {qreal(travel.x()), bottom - to / pixelRatio, qreal(travel.width()), (to - from) / pixelRatio};
}

int peakPixels(qreal pixelRatio)
{
    return std::max(1, qRound(peakHeight * pixelRatio));
}

} // namespace

QRect MeterFace::travel(const QSize &size)
{
    const int top = lampHeight + lampGap;
    return {0, top, size.width(), std::max(0, size.height() - top)};
}

QRect MeterFace::lamp(const QSize &size)
{
    return {0, 0, size.width(), lampHeight};
}

int MeterFace::steps(const QSize &size, qreal pixelRatio)
{
    return qRound(travel(size).height() * pixelRatio);
}

QRect MeterFace::changed(const QSize &size, qreal pixelRatio, const Reading &from, const Reading &to)
{
    QRectF rect;
    const QRect area = travel(size);
    if (from.bar != to.bar)
        rect |= slice(area, pixelRatio, std::min(from.bar, to.bar), std::max(from.bar, to.bar));
    if (from.peak != to.peak) {
        const int height = peakPixels(pixelRatio);
        rect |= slice(area, pixelRatio, from.peak - height, from.peak);
        rect |= slice(area, pixelRatio, to.peak - height, to.peak);
    }
    if (from.clipped != to.clipped)
        rect |= lamp(size);
    return rect.toAlignedRect();
}

void MeterFace::paint(QPainter &painter, const QSize &size, qreal pixelRatio, double highest, bool enabled,
                      const Reading &reading)
{
    prepare(size, pixelRatio, highest, enabled);
    painter.drawPixmap(0, 0, m_dark);
    const auto drawLit = [&](int from, int to) {
        const QRectF lit = slice(travel(size), pixelRatio, from, to);
        painter.drawPixmap(lit, m_lit, QRectF(lit.topLeft() * pixelRatio, lit.size() * pixelRatio));
    };
    if (reading.bar > 0)
        drawLit(0, reading.bar);
    if (reading.peak > 0)
        drawLit(std::max(0, reading.peak - peakPixels(pixelRatio)), reading.peak);
    if (reading.clipped)
        painter.fillRect(lamp(size), QColor(clipColor));
}

void MeterFace::prepare(const QSize &size, qreal pixelRatio, double highest, bool enabled)
{
    const bool isPrepared = size == m_size && qFuzzyCompare(pixelRatio, m_pixelRatio) && highest == m_highest
        && enabled == m_enabled;
    if (isPrepared)
        return;
    m_size = size;
    m_pixelRatio = pixelRatio;
    m_highest = highest;
    m_enabled = enabled;
    m_lit = scale(size, pixelRatio, true);
    m_dark = scale(size, pixelRatio, false);
}

QPixmap MeterFace::scale(const QSize &size, qreal pixelRatio, bool lit) const
{
    QPixmap picture(size * pixelRatio);
    picture.setDevicePixelRatio(pixelRatio);
    picture.fill(QColor(well));
    QPainter painter(&picture);
    const QRect area = travel(size);
    const int height = steps(size, pixelRatio);
    const auto pixelAt = [&](double dB) { return qRound(travelShare(dB, m_highest) * height); };
    for (const Zone &zone : zones) {
        const QRectF part = slice(area, pixelRatio, pixelAt(zone.from), pixelAt(zone.to));
        painter.fillRect(part.adjusted(1.0, 0.0, -1.0, 0.0), zoneColor(zone, lit, m_enabled));
    }
    for (const double notch : notches) {
        const int at = pixelAt(notch);
        painter.fillRect(slice(area, pixelRatio, at, at + 1), QColor(20, 23, 26, notch == 0.0 ? 230 : 120));
    }
    const QRectF mark = QRectF(lamp(size)).adjusted(1.0, 1.0, -1.0, -1.0);
    painter.fillRect(mark, mixed(QColor(well), QColor(clipColor), m_enabled ? 0.30 : 0.10));
    painter.fillRect(mark.adjusted(1.0, 1.0, -1.0, -1.0), QColor(well));
    return picture;
}

} // namespace vm
