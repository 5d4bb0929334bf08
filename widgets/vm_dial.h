#pragma once

#include "widgets/level_control.h"

#include <QColor>

/// A rotary dial for one level from -100 to +20 dB on the fader's scale, with the number drawn inside its
/// gauge. At -100 dB it is a dot, so that the levels in use stand out in a matrix of dials. The full range is
/// a drag of four dial heights, which rests a little at 0 dB; a double-click goes to 0 dB from -100 dB, and
/// to -100 dB from any other level.
class VmDial : public LevelControl
{
    Q_OBJECT
    /// dB, -100 to +20.
    Q_PROPERTY(double val READ Val WRITE setVal)

public:
    explicit VmDial(QWidget *parent = nullptr);

    /// Colour of the number; the palette's text colour until set. The dial's face is dark behind a light
    /// number and light behind a dark one.
    void setTextColor(const QColor &color);
    /// Colour of the empty part of the gauge.
    void setBaseColor(const QColor &color);
    /// Thickness of the gauge in pixels, at least 2.
    void setGaugeSize(int pixels);

    /// Shows a level in dB, clamped to the range, without emitting anything. Not a number is ignored.
    void setVal(double dB) { showLevel(dB); }
    /// dB. Exactly what was set until the user changes it to a whole decibel; -100 at first.
    double Val() const { return level(); }

    QSize sizeHint() const override { return {58, 58}; }
    QSize minimumSizeHint() const override { return {40, 40}; }

protected:
    double doubleClickLevel() const override;
    double dragLength() const override { return 4.0 * height(); }
    double shareOf(double dB) const override;
    double levelAt(double share) const override;
    LevelEntry *openEntry() override;

    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    void makeEntry();
    void placeEntry();
    void closeEntry();

    QColor m_textColor;
    QColor m_baseColor;
    int m_gaugeSize = 6;
    LevelEntry *m_entry = nullptr; // made when a number is first typed; owned by the dial
};
