#include "widgets/level_entry.h"

#include "widgets/level_steps.h"

#include <QCoreApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QWheelEvent>

#include <utility>

LevelEntry::LevelEntry(QWidget *parent)
    : RefusingEntry(parent)
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

QString LevelEntry::unit() const
{
    return tr(" dB");
}

void LevelEntry::fixup(QString &text) const
{
    m_isRefused = true;
    RefusingEntry::fixup(text);
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
    if (!std::exchange(m_isRefused, false))
        emit typed();
}

void LevelEntry::giveUp()
{
    m_typed = false;
    lineEdit()->setText(textFromValue(value()));
    emit left();
}
