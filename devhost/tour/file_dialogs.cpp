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

/// Puts the path into the dialog and confirms it. The answer is empty, or what is in the way.
QString chooseFile(const QFileDialog *dialog, const QString &path)
{
    auto *field = dialog->findChild<QLineEdit *>(QStringLiteral("fileNameEdit"));
    QString why = hands::click(field);
    if (!why.isEmpty())
        return why;
    // The list of completions would open at a moment of its own, and then take Enter for itself.
    field->setCompleter(nullptr);
    // As pasted: letter by letter the dialog selects each folder that the path goes through, and Enter would
    // go into that.
    field->selectAll();
    field->insert(QDir::toNativeSeparators(path));
    return hands::press(field, Qt::Key_Return, QStringLiteral("\r"));
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
    const QSharedPointer<QString> obstacle(new QString);
    return [path, sinceTry, obstacle]() -> QString {
        const QFileDialog *dialog = fileDialog();
        if (!dialog)
            return QString();
        if (!sinceTry->isValid())
            sinceTry->start();
        if (sinceTry->elapsed() > TryMs) {
            sinceTry->start();
            *obstacle = chooseFile(dialog, path);
        }
        return QStringLiteral("the file dialog is still open %1").arg(*obstacle).trimmed();
    };
}

} // namespace devhost::tour
