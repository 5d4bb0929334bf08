#include "widgets/number_entry.h"

#include <QCoreApplication>
#include <QRegularExpression>
#include <QTimer>
#include <QToolTip>

bool vm::isPartOfNumber(const QString &text)
{
    static const QRegularExpression number(QStringLiteral("^[+-]?\\d{0,6}([.,]\\d{0,3})?$"));
    return number.match(text).hasMatch();
}

void vm::tellRefusal(const QWidget *field, const QString &text, double least, double most,
                     const QString &unit)
{
    if (text.isEmpty())
        return;
    const QString reason = QCoreApplication::translate(
                               "NumberEntry", "%1 is not possible: enter a whole number from %2 to %3%4.")
                               .arg(text)
                               .arg(least)
                               .arg(most)
                               .arg(unit);
    // Once the keyboard focus is where it goes now: a tool tip disappears when it moves.
    QTimer::singleShot(0, field, [field, reason] {
        QToolTip::showText(field->mapToGlobal(QPoint(0, field->height())), reason, field->window());
    });
}
