#pragma once

#include <QMessageBox>

namespace devhost {

// Names come from the network and from files. Qt reads a text that looks like markup as markup, and then
// loads the files that it names.

/// @p text for a tool tip, which shows it as it is.
QString plainTip(const QString &text);

/// A message box that shows its text as it is.
class PlainBox : public QMessageBox
{
    Q_OBJECT

public:
    PlainBox(Icon icon, const QString &title, const QString &text, StandardButtons buttons, QWidget *window);
};

} // namespace devhost
