#pragma once

#include <QWidget>

/// A widget that shows one level in decibels and lets the hand change it: the common half of the gain
/// fader and the dial. A level set by program is silent and kept exactly as set; the hand only ever
/// picks whole decibels.
///
/// Drag up and down (relative; Ctrl ten times finer), arrow keys and wheel 1 dB, with Shift 3 dB, Page keys
/// 6 dB, Home the lowest and End the highest level as on a Qt slider. Digits or a sign start typing. The
/// wheel works only while the widget has the keyboard focus; otherwise the parent gets it and can scroll.
class LevelControl : public QWidget
{
    Q_OBJECT

public:
    explicit LevelControl(QWidget *parent = nullptr);

    /// dB. The level last set, or the whole decibel that the hand picked since.
    double level() const { return m_level; }

signals:
    /// The hand changed the level. Never emitted for a level set by program.
    void parametersChanged();

protected:
    void showLevel(double level);

private:
    double m_level = 0.0;
};
