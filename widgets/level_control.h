#pragma once

#include "widgets/level_steps.h"
#include "widgets/level_taper.h"

#include <QColor>
#include <QSharedPointer>
#include <QWidget>

class AccessibleLevels;
class LevelEntry;

/// A widget that shows one level in decibels and lets the user change it: the common half of the gain
/// fader and the dial. A level set by program is silent and kept exactly as set; the user only ever picks
/// whole decibels.
///
/// Drag up and down (relative, after a dead band of one pixel; Ctrl ten times finer), arrow keys and wheel
/// 1 dB, with Shift 3 dB, Page keys 6 dB, Home the lowest and End the highest level as on a Qt slider. Digits
/// or a sign start typing. The wheel works only while the widget or its entry has the keyboard focus;
/// otherwise the parent gets it and can scroll.
class LevelControl : public QWidget
{
    Q_OBJECT
    /// Colour of the part that shows the level; the palette's highlight unless set. Drawn darker or lighter
    /// where it would not be seen on the window's colour.
    Q_PROPERTY(QColor accentColor READ accentColor WRITE setAccentColor)

public:
    explicit LevelControl(QWidget *parent = nullptr);
    ~LevelControl() override;

    /// dB. The level last set, or the whole decibel that the user picked since.
    double level() const { return m_level; }
    /// dB, the upper end of the range; the lower end is vm::lowestLevel.
    double highest() const { return m_highest; }

    /// Changes the level as the user does: rounded to whole dB, clamped to the range, and announced with
    /// parametersChanged() when that makes a difference. Not a number is ignored.
    void pickLevel(double dB);

    /// As drawn now: grey while the widget is disabled.
    QColor accentColor() const;
    void setAccentColor(const QColor &color);

signals:
    /// The user changed the level. Never emitted for a level set by program.
    void parametersChanged();

protected:
    /// Shows a level set by program: clamped, silent.
    void showLevel(double dB);
    void setHighest(double dB);

    /// dB to go to on a double-click.
    virtual double doubleClickLevel() const = 0;
    /// Pixels that the pointer moves from one end of the range to the other.
    virtual double dragLength() const = 0;
    /// The way that a drag takes between the two ends: share 0 to 1 of it for a level, and back.
    virtual double shareOf(double dB) const = 0;
    virtual double levelAt(double share) const = 0;
    /// The entry in which a typed number goes on, shown; owned by the control.
    virtual LevelEntry *openEntry() = 0;
    /// level() or highest() is another one now.
    virtual void levelShown() { }

    void keyPressEvent(QKeyEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    enum class Drag { None, Pressed, Moving };

    void store(double dB);
    void dragBy(double pixels);

    QSharedPointer<AccessibleLevels> m_accessible;
    double m_level = 0.0;
    double m_highest = vm::highestLevel;
    QColor m_accent;
    vm::WheelSteps m_wheel;
    Drag m_drag = Drag::None;
    double m_dragY = 0.0; // of the pointer on the screen
    double m_dragShare = 0.0;
};
