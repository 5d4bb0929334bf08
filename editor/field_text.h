#pragma once

#include <QLineEdit>

/// Shows @p text in a field. One that stands there already keeps its cursor and what the user has marked to
/// copy it, however often the device confirms it.
inline void showText(QLineEdit *field, const QString &text)
{
    if (field->text() != text)
        field->setText(text);
}
