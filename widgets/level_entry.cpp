#include "widgets/level_entry.h"

#include "widgets/level_steps.h"

#include <QCoreApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QWheelEvent>

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
    emit typed();
}

void LevelEntry::giveUp()
{
    m_typed = false;
    lineEdit()->setText(textFromValue(value()));
    emit left();
}
