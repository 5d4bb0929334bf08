#pragma once

#include "widgets/fader_face.h"
#include "widgets/level_control.h"

#include <QColor>

class QDoubleSpinBox;
class QLabel;
class QPushButton;
class QSpacerItem;
class PeakReadout;
class VMMeter;

/// A gain fader from -100 dB up to its highest gain, with a level meter on the same scale beside it and a
/// numeric entry below. Readable from 57 x 150 pixels on. A double-click goes to 0 dB.
///
/// The dynamic property "maxgain" is the upper end of the range in dB; 20 until it is set to a number
/// above -100. A gain above a lowered end is lowered with it, silently.
class VmDspGain : public LevelControl
{
    Q_OBJECT
    /// dB, -100 to the highest gain.
    Q_PROPERTY(double gain READ Gain WRITE setGain)

public:
    explicit VmDspGain(QWidget *parent = nullptr);

    /// Shows a gain in dB, clamped to the range, without emitting anything. Not a number is ignored.
    void setGain(double dB) { showLevel(dB); }
    /// dB. Exactly what was set until the user changes it to a whole decibel; 0 at first.
    double Gain() const { return level(); }

    /// The meter beside the fader; owned by the fader.
    VMMeter *getMeter() const { return m_meter; }
    /// The meter's loudest level as a number; owned by the fader.
    PeakReadout *peakReadout() const { return m_readout; }
    /// The entry below the fader, "numericEntry"; owned by the fader. Whole decibels in steps of 1 dB.
    /// Whatever changes its value from outside counts as a change by the user.
    QDoubleSpinBox *numericEntry() const;
    /// The built-in buttons, checkable and hidden until shown; owned by the fader.
    QPushButton *button1() const { return m_button1; }
    QPushButton *button2() const { return m_button2; }

    /// Text above the fader, "Gain" until set; hidden until setShowLabel(true).
    void setLabel(const QString &text);
    void setLabelColor(const QColor &color);
    void setShowLabel(bool shown);
    void setShowButton1(bool shown);
    void setShowButton2(bool shown);
    void setButton1_text(const QString &text);
    void setButton2_text(const QString &text);

    /// False for an owner that has numbers of its own at the ends of the scale, beside travelRect().
    void setEndsNumbered(bool numbered);
    /// The rows between the lowest (bottom) and highest (top) gain.
    QRect travelRect() const { return m_geometry.travel(); }

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    double doubleClickLevel() const override { return 0.0; }
    double dragLength() const override { return travelRect().height(); }
    double shareOf(double dB) const override;
    double levelAt(double share) const override;
    LevelEntry *openEntry() override { return m_entry; }
    void levelShown() override;

    bool event(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    QPushButton *addButton(const char *name);
    void arrange();
    void placeParts();
    void connectEntry();
    void readHighestGain();

    QLabel *m_label;
    VMMeter *m_meter;
    PeakReadout *m_readout;
    LevelEntry *m_entry;
    QPushButton *m_button1;
    QPushButton *m_button2;
    QSpacerItem *m_room = nullptr; // for groove, scale and meter; owned by the layout
    vm::FaderGeometry m_geometry;
    bool m_endsNumbered = true;
};
