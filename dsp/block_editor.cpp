#include "dsp/block_editor.h"

#include <QCloseEvent>
#include <QLabel>

void BlockEditor::setBlockTitle(const QString &title)
{
    setWindowTitle(title);
    if (auto *heading = findChild<QLabel *>(QStringLiteral("block_label")))
        heading->setText(title);
}

void BlockEditor::reject()
{
    emit close();
}

void BlockEditor::closeEvent(QCloseEvent *event)
{
    event->accept();
    emit close();
}
