#include "widgets/level_entry.h"

#include "widgets/level_steps.h"

#include <QCoreApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QRegularExpression>
#include <QTimer>
#include <QToolTip>
#include <QWheelEvent>

#include <utility>

LevelEntry::LevelEntry(QWidget *parent)
    : QDoubleSpinBox(parent)
{
    setButtonSymbols(QAbstractSpinBox::NoButtons);
    setAlignment(Qt::AlignCenter);
    setDecimals(0);
    setSingleStep(1.0);
    setKeyboardTracking(false);
    setFocusPolicy(Qt::StrongFocus);
    connect(lineEdit(), &QLineEdit::textEdited, this, [this] { m_typed = true; });
    connect(this, &LevelEntry::editingFinished, this, &LevelEntry::finish);
}

void LevelEntry::startWith(QKeyEvent *keyPress)
{
    setFocus(Qt::OtherFocusReason);
    selectAll();
    QCoreApplication::sendEvent(this, keyPress);
}

/// Left to itself a spin box drops the keys that would lead out of its range, and takes what remains.
QValidator::State LevelEntry::validate(QString &text, int &position) const
{
    static const QRegularExpression number(QStringLiteral("^[+-]?\\d{0,6}([.,]\\d{0,3})?$"));
    const QValidator::State state = QDoubleSpinBox::validate(text, position);
    return state == QValidator::Invalid && number.match(text).hasMatch() ? QValidator::Intermediate : state;
}

void LevelEntry::fixup(QString &text) const
{
    m_refused = text;
}

void LevelEntry::keyPressEvent(QKeyEvent *event)
{
    const bool sideways = event->key() == Qt::Key_Left || event->key() == Qt::Key_Right;
    const double step = sideways ? 0.0 : vm::keyStep(*event);
    if (step != 0.0) {
        interpretText();
        finish();
        setValue(value() + step);
    } else if (event->key() == Qt::Key_Escape && m_typed) {
        giveUp();
    } else {
        const bool entered = event->key() == Qt::Key_Enter || event->key() == Qt::Key_Return;
        const bool ended = entered && m_typed;
        QDoubleSpinBox::keyPressEvent(event);
        if (ended) {
            event->accept(); // not the dialog's default button
            emit left();
        }
    }
}

void LevelEntry::wheelEvent(QWheelEvent *event)
{
    event->ignore();
}

void LevelEntry::finish()
{
    if (!m_typed)
        return;
    m_typed = false;
    const QString refused = std::exchange(m_refused, QString());
    if (refused.isEmpty())
        emit typed();
    else
        tellRefusal(refused);
}

void LevelEntry::tellRefusal(const QString &text)
{
    const QString reason = tr("%1 is not possible: levels are whole numbers from %2 to %3 dB.")
                               .arg(text)
                               .arg(minimum())
                               .arg(maximum());
    // Once the keyboard focus is where it goes now: a tool tip disappears when it moves.
    QTimer::singleShot(0, this, [this, reason] {
        QToolTip::showText(mapToGlobal(QPoint(0, height())), reason, parentWidget());
    });
}

void LevelEntry::giveUp()
{
    m_typed = false;
    lineEdit()->setText(textFromValue(value()));
    emit left();
}
