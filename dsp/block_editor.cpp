#include "dsp/block_editor.h"

#include "dsp/device_badge.h"

#include <QCloseEvent>
#include <QLabel>
#include <QShortcut>

#include <utility>

BlockEditor::BlockEditor(QWidget *parent)
    : QDialog(parent)
{
    connect(new QShortcut(QKeySequence(Qt::CTRL + Qt::Key_W), this), &QShortcut::activated, this,
            &BlockEditor::reject);
}

void BlockEditor::setBlockTitle(const QString &title)
{
    setWindowTitle(title);
    if (auto *heading = findChild<QLabel *>(QStringLiteral("block_label")))
        heading->setText(title);
}

void BlockEditor::setDeviceName(const QString &name)
{
    m_badge->setName(name);
    setAccessibleDescription(name);
}

void BlockEditor::shareCaches(std::shared_ptr<const SectionCaches> caches)
{
    m_caches = std::move(caches);
}

void BlockEditor::onLevels(const QByteArray &) { }

void BlockEditor::onUsbMode(int, int) { }

void BlockEditor::bringToFront()
{
    setWindowState(windowState() & ~Qt::WindowMinimized);
    raise();
    activateWindow();
}

void BlockEditor::reject()
{
    emit close();
}

void BlockEditor::showEvent(QShowEvent *event)
{
    QDialog::showEvent(event);
    // Only now: a change of window flags forgets where the focus was to be.
    if (m_start && !event->spontaneous())
        m_start->setFocus();
}

void BlockEditor::closeEvent(QCloseEvent *event)
{
    event->accept();
    emit close();
}
