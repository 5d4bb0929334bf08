#pragma once

#include "widgets/number_entry.h"

/// The numeric entry of a fader or dial: whole decibels, no buttons. Keys step as they do on the fader, a
/// number takes effect when it is finished (Enter or loss of focus), and the wheel is left to the parent.
class LevelEntry : public RefusingEntry<QDoubleSpinBox>
{
    Q_OBJECT

public:
    explicit LevelEntry(QWidget *parent = nullptr);

    /// True from the first typed character until the number is finished or given up.
    bool isBeingTyped() const { return m_typed; }
    /// Takes the keyboard focus and the key press that began a number.
    void startWith(QKeyEvent *keyPress);

signals:
    /// A typed number was finished; value() holds it, changed or not.
    void typed();
    /// Typing ended by Enter or Escape: the owner may take the keyboard focus back.
    void left();

protected:
    QString unit() const override;
    void fixup(QString &text) const override;
    void keyPressEvent(QKeyEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;

private:
    void finish();
    void giveUp();

    bool m_typed = false;
    mutable bool m_isRefused = false; ///< what was typed last is no level
};
