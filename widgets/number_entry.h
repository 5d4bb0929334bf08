#pragma once

#include <QSpinBox>

namespace vm {

/// What a user may have typed on the way to a number, whatever its size.
bool isPartOfNumber(const QString &text);
/// Says below @p field, once control is back in the event loop, which numbers it takes instead of @p text;
/// @p unit follows the last one. Says nothing of an empty text.
void tellRefusal(const QWidget *field, const QString &text, double least, double most, const QString &unit);

} // namespace vm

/// A spin box, QSpinBox or QDoubleSpinBox, of whole numbers that refuses what is out of its range as a whole,
/// with a tool tip that says what is in it. Left to itself a spin box drops the keys that would lead out, and
/// takes what remains.
template <typename SpinBox>
class RefusingEntry : public SpinBox
{
public:
    using SpinBox::SpinBox;

protected:
    virtual QString unit() const { return this->suffix(); }

    QValidator::State validate(QString &text, int &position) const override
    {
        const QValidator::State state = SpinBox::validate(text, position);
        return state == QValidator::Invalid && vm::isPartOfNumber(number(text)) ? QValidator::Intermediate
                                                                                : state;
    }

    void fixup(QString &text) const override
    {
        vm::tellRefusal(this, number(text), this->minimum(), this->maximum(), unit());
    }

private:
    QString number(QString text) const { return text.remove(this->suffix()).trimmed(); }
};

/// For forms. A typed number takes effect when it is finished: by Enter, by the loss of focus, or by
/// interpretText().
class NumberEntry : public RefusingEntry<QSpinBox>
{
public:
    explicit NumberEntry(QWidget *parent = nullptr)
        : RefusingEntry(parent)
    {
        setKeyboardTracking(false);
    }
};
