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

QString chooseFile(const QString &path)
{
    const QFileDialog *dialog = fileDialog();
    auto *field = dialog ? dialog->findChild<QLineEdit *>(QStringLiteral("fileNameEdit")) : nullptr;
    // The list of completions would open at a moment of its own, and then take Enter for itself.
    if (field)
        field->setCompleter(nullptr);
    return hands::enter(field, QDir::toNativeSeparators(path));
}

std::function<QString()> untilChosen(const QString &path)
{
    const QSharedPointer<QElapsedTimer> sinceTry(new QElapsedTimer);
    return [path, sinceTry]() -> QString {
        if (!fileDialog())
            return QString();
        if (!sinceTry->isValid())
            sinceTry->start();
        if (sinceTry->elapsed() > TryMs) {
            sinceTry->start();
            const QString why = chooseFile(path);
            if (!why.isEmpty())
                return why;
        }
        return QStringLiteral("the file dialog is still open");
    };
}

} // namespace devhost::tour
