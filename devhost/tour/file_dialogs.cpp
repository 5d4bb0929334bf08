#include "devhost/tour/file_dialogs.h"

#include "devhost/tour/hands.h"

#include <QApplication>
#include <QDialogButtonBox>
#include <QDir>
#include <QFileDialog>
#include <QLineEdit>
#include <QPushButton>

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
    const QString why = hands::type(field, QDir::toNativeSeparators(path));
    if (!why.isEmpty())
        return why;
    const auto *box = dialog->findChild<QDialogButtonBox *>();
    const bool saving = dialog->acceptMode() == QFileDialog::AcceptSave;
    return hands::click(box->button(saving ? QDialogButtonBox::Save : QDialogButtonBox::Open));
}

} // namespace devhost::tour
