#pragma once

#include <QColor>
#include <QFont>
#include <QRectF>
#include <QString>

class QPainter;

namespace vm {

/// What a dial looks like at one moment.
struct DialState
{
    double share = 0.0; ///< of the gauge that is filled; at 0 the dial is closed
    double tick = 0.0; ///< share of the gauge at which the 0 dB tick stands
    QString number;
    QFont font; ///< made smaller where the number does not fit into the gauge
    QColor text;
    QColor base; ///< empty part of the gauge
    QColor accent; ///< filled part of the gauge
    QColor frame; ///< around a dial with the keyboard
    int gauge = 6; ///< px
    bool hovered = false;
    bool focused = false;
};

/// Draws the largest dial that fits into the rectangle, in its middle. A closed one is a quiet dot until the
/// pointer or the keyboard is at it, so that those in use are seen from a distance.
void paintDial(QPainter &painter, const QRectF &rect, const DialState &state);

} // namespace vm
