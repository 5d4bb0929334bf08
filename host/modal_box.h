#pragma once

#include "host/plexo_host_export.h"

#include <QMessageBox>

/// Contents of a message box, shown as plain text. Buttons keep Qt's texts; an empty text is not shown.
struct BoxText
{
    QMessageBox::Icon icon = QMessageBox::Warning;
    QString title;
    QString text;
    QString informativeText;
    QString detailedText;
    QMessageBox::StandardButtons buttons = QMessageBox::Ok;
    QMessageBox::StandardButton defaultButton = QMessageBox::Ok;
};

/// Shows a message box without parent and waits for its answer. The box goes away unanswered, with
/// QMessageBox::NoButton, when @p owner is destroyed meanwhile: callers must then touch nothing of the
/// owner's. While a box with the same text and owner is open, no second one opens: that, too, is NoButton.
/// With @p over the box is shown centred over that widget's top-level window, and only that window and those
/// that belong to it wait for the answer; what else the program shows stays usable. While another dialog
/// runs, or that window is not to be seen, everything waits instead.
PLEXO_HOST_EXPORT QMessageBox::StandardButton runModalBox(const BoxText &text, const QObject *owner,
                                                          const QWidget *over = nullptr);
