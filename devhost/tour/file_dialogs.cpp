#include "devhost/tour/file_dialogs.h"

#include "devhost/tour/hands.h"

#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFileDialog>
#include <QLineEdit>
#include <QSharedPointer>

namespace devhost::tour {

namespace {

constexpr int TryMs = 700;

/// Types the path into the dialog and confirms it. The answer is empty, or what is in the way.
QString chooseFile(const QFileDialog *dialog, const QString &path)
{
    auto *field = dialog->findChild<QLineEdit *>(QStringLiteral("fileNameEdit"));
    // The list of completions would open at a moment of its own, and then take Enter for itself.
    if (field)
        field->setCompleter(nullptr);
    return hands::enter(field, QDir::toNativeSeparators(path));
}

} // namespace

QFileDialog *fileDialog()
{
    for (QWidget *widget : QApplication::topLevelWidgets()) {
        auto *dialog = qobject_cast<QFileDialog *>(widget);
        if (dialog && dialog->isVisible())
            return dialog;
    }
    return nullptr;
}

std::function<QString()> untilChosen(const QString &path)
{
    const QSharedPointer<QElapsedTimer> sinceTry(new QElapsedTimer);
    return [path, sinceTry]() -> QString {
        const QFileDialog *dialog = fileDialog();
        if (!dialog)
            return QString();
        if (!sinceTry->isValid())
            sinceTry->start();
        if (sinceTry->elapsed() > TryMs) {
            sinceTry->start();
            QString why = chooseFile(dialog, path);
            if (!why.isEmpty())
                return why;
        }
        return QStringLiteral("the file dialog is still open");
    };
}

} // namespace devhost::tour
