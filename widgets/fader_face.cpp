#include "widgets/fader_face.h"

#include "widgets/level_taper.h"
#include "widgets/meter_face.h"
#include "widgets/paint_tools.h"

#include <QCoreApplication>
#include <QPainter>

#include <array>

namespace vm {

namespace {

constexpr int handleWidth = 24;
constexpr int handleHeight = 30;
constexpr int numbersWidth = 18;
constexpr int meterWidth = 12;
constexpr int gap = 1;
constexpr int grooveWidth = 4;
constexpr int readoutHeight = 15;
constexpr int numberPixels = 9; // font size
constexpr double disabledContrast = 0.45;

/// In the order in which they get a number when there is no room for all.
constexpr std::array<double, 9> marks{0.0, 20.0, -20.0, -40.0, 10.0, -10.0, -30.0, -100.0, -60.0};

int contentWidth()
{
    return handleWidth + gap + numbersWidth + gap + meterWidth;
}

/// Between the window's colour (0) and its text's (1): light parts on a dark window and the reverse.
QColor shade(const FaderState &state, double share)
{
    return mixed(state.window, state.text, state.enabled ? share : share * disabledContrast);
}

qreal rowOf(const QRect &travel, double share)
{
    return travel.y() + travel.height() * (1.0 - share);
}

void paintMarks(QPainter &painter, const FaderGeometry &geometry, const FaderState &state)
{
    const QRect groove = geometry.groove();
    const int wings = (handleWidth - grooveWidth) / 2;
    for (const double dB : marks) {
        if (dB > state.highest)
            continue;
        const bool isZero = dB == 0.0;
        const int length = isZero ? wings - 1 : wings - 5;
        const qreal row = rowOf(geometry.travel(), travelShare(dB, state.highest));
        const QColor color = shade(state, isZero ? 0.85 : 0.45);
        const qreal height = isZero ? 2.0 : 1.0;
        painter.fillRect(sharpLine(groove.left() - 1 - length, row, length, height, state.pixelRatio), color);
        painter.fillRect(sharpLine(groove.right() + 2, row, length, height, state.pixelRatio), color);
    }
}

void paintNumber(QPainter &painter, const FaderState &state, const QRect &box, const QString &text, bool bold)
{
    QFont font = state.font;
    font.setPixelSize(numberPixels);
    font.setBold(bold);
    font.setStretch(text.size() > 3 ? QFont::SemiCondensed : QFont::Unstretched);
    painter.setFont(font);
    painter.setPen(shade(state, bold ? 1.0 : 0.75));
    painter.drawText(box.adjusted(-3, -2, 3, 2), Qt::AlignCenter, text);
}

void paintNumbers(QPainter &painter, const FaderGeometry &geometry, const FaderState &state)
{
    const QRect column = geometry.numbers();
    const QRect travel = geometry.travel();
    const auto boxAt = [&column](int row) {
        return QRect(column.x(), row - numberPixels / 2 - 1, column.width(), numberPixels + 2);
    };
    QRegion taken;
    for (const double dB : marks) {
        const bool isEnd = dB == state.highest || dB == lowestLevel;
        const QRect box = boxAt(qRound(rowOf(travel, travelShare(dB, state.highest))));
        if (dB > state.highest || (isEnd && !state.endsNumbered) || taken.intersects(box))
            continue;
        taken |= box;
        paintNumber(painter, state, box, QString::number(dB), dB == 0.0);
    }
    const int unitRow = state.endsNumbered ? travel.top() - numberPixels - 2 : travel.top();
    paintNumber(painter, state, boxAt(unitRow), QCoreApplication::translate("vm", "dB"), false);
}

void paintGroove(QPainter &painter, const FaderGeometry &geometry, const FaderState &state)
{
    const QRectF groove = geometry.groove();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(shade(state, 0.28));
    painter.drawRoundedRect(groove, 2.0, 2.0);
    QRectF below = groove;
    below.setTop(rowOf(geometry.travel(), state.share));
    painter.setBrush(state.accent);
    painter.drawRoundedRect(below, 2.0, 2.0);
}

/// The line across its middle points at the level.
void paintHandle(QPainter &painter, const FaderGeometry &geometry, const FaderState &state)
{
    QRectF handle = geometry.handle(state.share);
    handle.moveTop(snapped(handle.top(), state.pixelRatio));
    const double light = state.hovered ? 0.92 : 0.80;
    QLinearGradient body(handle.topLeft(), handle.bottomLeft());
    body.setColorAt(0.0, shade(state, light));
    body.setColorAt(0.22, shade(state, light - 0.12));
    body.setColorAt(0.5, shade(state, light - 0.32));
    body.setColorAt(0.78, shade(state, light - 0.12));
    body.setColorAt(1.0, shade(state, light - 0.25));
    painter.setPen(QPen(shade(state, 0.05), 1.0));
    painter.setBrush(body);
    painter.drawRoundedRect(handle.adjusted(0.5, 0.5, -0.5, -0.5), 3.0, 3.0);
    painter.setRenderHint(QPainter::Antialiasing, false);
    const auto line = [&](double offset, double height, double inset, const QColor &color) {
        painter.fillRect(sharpLine(handle.x() + inset, handle.center().y() + offset,
                                   handle.width() - 2.0 * inset, height, state.pixelRatio),
                         color);
    };
    for (const double offset : {-9.0, -6.0, 6.0, 9.0})
        line(offset, 1.0, 5.0, shade(state, light - 0.42));
    line(0.0, 4.0, 1.0, shade(state, 0.05));
    line(0.0, 2.0, 1.0, shade(state, 1.0));
}

} // namespace

FaderGeometry::FaderGeometry(const QRect &area)
    : m_area(area.x() + (area.width() - contentWidth()) / 2, area.y(), contentWidth(), area.height())
{
}

QRect FaderGeometry::travel() const
{
    return m_area.adjusted(0, readoutHeight + handleHeight / 2 + 1, 0, -handleHeight / 2 - 1);
}

QRect FaderGeometry::groove() const
{
    return {m_area.x() + (handleWidth - grooveWidth) / 2, travel().y(), grooveWidth, travel().height()};
}

QRect FaderGeometry::numbers() const
{
    return {m_area.x() + handleWidth + gap, m_area.y(), numbersWidth, m_area.height()};
}

QRect FaderGeometry::meter() const
{
    const int above = MeterFace::lampHeight + MeterFace::lampGap;
    return {m_area.right() + 1 - meterWidth, travel().y() - above, meterWidth, travel().height() + above};
}

QRect FaderGeometry::readout() const
{
    const int width = numbersWidth + gap + meterWidth;
    return {m_area.right() + 1 - width, m_area.y(), width, readoutHeight};
}

QRectF FaderGeometry::handle(double share) const
{
    return {qreal(m_area.x()), rowOf(travel(), share) - handleHeight / 2.0, qreal(handleWidth),
            qreal(handleHeight)};
}

QRect FaderGeometry::focusFrame() const
{
    return m_area.adjusted(-1, readoutHeight + 1, 1, 0);
}

void paintFader(QPainter &painter, const FaderGeometry &geometry, const FaderState &state)
{
    paintMarks(painter, geometry, state);
    paintNumbers(painter, geometry, state);
    paintGroove(painter, geometry, state);
    if (state.focused)
        paintFocusFrame(painter, geometry.focusFrame(), state.frame);
    paintHandle(painter, geometry, state);
}

} // namespace vm
