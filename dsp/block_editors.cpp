#include "dsp/block_editors.h"

#include "dsp/matrix_mixer_form.h"
#include "dsp/strip_editors.h"

#include <QWindow>

#include <utility>

BlockEditors::BlockEditors(const QWidget *window, std::shared_ptr<const SectionCaches> caches)
    : m_window(window)
    , m_caches(std::move(caches))
{
}

BlockEditors::~BlockEditors()
{
    closeAll();
}

void BlockEditors::open(Block block)
{
    BlockEditor *&editor = m_editors[size_t(block)];
    if (!editor) {
        const BlockInfo &info = blockInfo(block);
        editor = info.create(&(*m_caches)[info.section]);
        editor->shareCaches(m_caches);
        editor->setBlockTitle(info.title);
        editor->setDeviceName(m_deviceName);
        editor->setStyleSheet(m_window->styleSheet());
        editor->setModal(false);
        editor->setWindowFlag(Qt::WindowContextHelpButtonHint, false);
        wire(block, editor);
        keepAboveWindow(editor);
        editor->show();
    }
    editor->bringToFront();
}

/// Or a click on the window would bury its editors. A parent would do it as well, and delete them with
/// itself.
void BlockEditors::keepAboveWindow(BlockEditor *editor) const
{
    editor->winId(); // makes the native window
    if (QWindow *below = m_window->window()->windowHandle())
        editor->windowHandle()->setTransientParent(below);
}

void BlockEditors::setDeviceName(const QString &name)
{
    m_deviceName = name;
    for (BlockEditor *editor : m_editors) {
        if (editor)
            editor->setDeviceName(name);
    }
}

void BlockEditors::wire(Block block, BlockEditor *editor)
{
    connect(editor, &BlockEditor::close, this, [this, block] { close(block); });
    connect(this, &BlockEditors::dataChanged, editor, &BlockEditor::onDataChanged);
    connect(this, &BlockEditors::meteringLevels, editor, &BlockEditor::onLevels);
    connect(this, &BlockEditors::usbMode, editor, &BlockEditor::onUsbMode);
    if (auto *strips = qobject_cast<StripEditor *>(editor))
        connect(strips, &StripEditor::uiChanged, this,
                [this, block](const ChannelRecord &change) { emit stripChanged(block, change); });
    if (auto *playback = qobject_cast<UsbInForm *>(editor))
        connect(this, &BlockEditors::usbHostStatusChanged, playback, &UsbInForm::onUsbHostStatus);
    if (auto *mixer = qobject_cast<MatrixMixerForm *>(editor)) {
        connect(mixer, &MatrixMixerForm::uiMixChanged, this, &BlockEditors::crosspointChanged);
        connect(mixer, &MatrixMixerForm::uiTonGenChanged, this, &BlockEditors::toneChanged);
        connect(this, &BlockEditors::toneShown, mixer, &MatrixMixerForm::onToneGenChanged);
    }
}

void BlockEditors::close(Block block)
{
    BlockEditor *editor = std::exchange(m_editors[size_t(block)], nullptr);
    if (!editor)
        return;
    editor->disconnect(this);
    disconnect(editor);
    editor->hide();
    editor->deleteLater();
}

void BlockEditors::closeAll()
{
    for (int block = 0; block < BlockCount; ++block)
        close(Block(block));
}
