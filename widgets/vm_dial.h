#pragma once

#include "widgets/level_control.h"

#include <QColor>

/// A rotary dial for one level from -100 to +20 dB, with the number drawn inside its gauge. At -100 dB the
/// gauge is empty, so that the levels in use stand out in a matrix of dials.
class VmDial : public LevelControl
{
    Q_OBJECT
    /// dB, -100 to +20.
    Q_PROPERTY(double val READ Val WRITE setVal)

public:
    explicit VmDial(QWidget *parent = nullptr);

    /// Colour of the number.
    void setTextColor(const QColor &color);
    /// Colour of the empty part of the gauge.
    void setBaseColor(const QColor &color);
    /// Thickness of the gauge in pixels, at least 2.
    void setGaugeSize(int pixels);

    /// Shows a level in dB, clamped to the range, without emitting anything. Not a number is ignored.
    void setVal(double dB);
    /// dB. Exactly what was set until the hand changes it to a whole decibel.
    double Val() const { return level(); }

    QSize sizeHint() const override;

private:
    QColor m_textColor;
    QColor m_baseColor;
    int m_gaugeSize = 6;
};
