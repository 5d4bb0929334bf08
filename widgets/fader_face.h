#pragma once

#include <QColor>
#include <QFont>
#include <QRect>

class QPainter;

namespace vm {

/// Where the parts of a fader stand: groove and handle on the left, the numbers of the scale beside them,
/// the meter with its read-out above it on the right, all on one travel.
class FaderGeometry
{
public:
    FaderGeometry() = default;
    /// `area` is the room for groove, scale and meter in the widget's coordinates.
    explicit FaderGeometry(const QRect &area);

    /// The rows between the lowest (bottom) and highest (top) level.
    QRect travel() const;
    QRect groove() const;
    QRect numbers() const;
    /// The meter reaches above the travel with its clip mark.
    QRect meter() const;
    QRect readout() const;
    /// The handle with its middle at a share of the travel.
    QRectF handle(double share) const;
    /// Around everything that the keys act on.
    QRect focusFrame() const;

private:
    QRect m_area;
};

/// What a fader looks like at one moment.
struct FaderState
{
    double share = 0.0; ///< of the travel, where the handle stands
    double highest = 20.0; ///< dB at the top
    bool endsNumbered = true; ///< false where numbers of the owner stand at the ends
    QColor accent;
    QColor frame; ///< around a fader with the keyboard
    QColor window;
    QColor text;
    QFont font;
    qreal pixelRatio = 1.0;
    bool enabled = true;
    bool hovered = false;
    bool focused = false;
};

void paintFader(QPainter &painter, const FaderGeometry &geometry, const FaderState &state);

} // namespace vm
