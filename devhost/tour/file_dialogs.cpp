#include "devhost/tour/file_dialogs.h"

#include "devhost/tour/hands.h"

#include <QApplication>
#include <QDir>
#include <QFileDialog>
#include <QLineEdit>

namespace devhost::tour {

QFileDialog *fileDialog()
{
    for (QWidget *widget : QApplication::topLevelWidgets()) {
        auto *dialog = qobject_cast<QFileDialog *>(widget);
        if (dialog && dialog->isVisible())
            return dialog;
    }
    return nullptr;
}

QString chooseFile(const QString &path)
{
    const QFileDialog *dialog = fileDialog();
    auto *field = dialog ? dialog->findChild<QLineEdit *>(QStringLiteral("fileNameEdit")) : nullptr;
    // The list of completions would open at a moment of its own, and then take Enter for itself.
    if (field)
        field->setCompleter(nullptr);
    return hands::enter(field, QDir::toNativeSeparators(path));
}

} // namespace devhost::tour
