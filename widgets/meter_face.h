#pragma once

#include <QPixmap>
#include <QRect>
#include <QSize>

class QPainter;

namespace vm {

/// The picture of a meter: its zones, drawn once lit and once dark for a size, scale and pixel ratio, of
/// which painting only copies the parts that the bar covers or leaves free.
class MeterFace
{
public:
    /// What the meter shows, in device pixels above the bottom of the travel.
    struct Reading
    {
        int bar = 0;
        int peak = 0;
        bool clipped = false;

        bool operator==(const Reading &other) const
        {
            return bar == other.bar && peak == other.peak && clipped == other.clipped;
        }
        bool operator!=(const Reading &other) const { return !(*this == other); }
    };

    static constexpr int lampHeight = 6; ///< px of the clip mark above the travel
    static constexpr int lampGap = 2; ///< px

    /// The part of a meter of this size in which the bar moves.
    static QRect travel(const QSize &size);
    static QRect lamp(const QSize &size);
    /// Device pixels of the travel.
    static int steps(const QSize &size, qreal pixelRatio);
    /// What has to be painted again when the reading changes.
    static QRect changed(const QSize &size, qreal pixelRatio, const Reading &from, const Reading &to);

    /// Draws the meter at the painter's origin. `highest` is the dB at the top of the travel.
    void paint(QPainter &painter, const QSize &size, qreal pixelRatio, double highest, bool enabled,
               const Reading &reading);

private:
    void prepare(const QSize &size, qreal pixelRatio, double highest, bool enabled);
    QPixmap scale(const QSize &size, qreal pixelRatio, bool lit) const;

    QPixmap m_lit;
    QPixmap m_dark;
    QSize m_size;
    qreal m_pixelRatio = 0.0;
    double m_highest = 0.0;
    bool m_enabled = true;
};

} // namespace vm
