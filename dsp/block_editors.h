#pragma once

#include "dsp/blocks.h"
#include "dsp/change_records.h"

#include <QObject>

#include <memory>

class QWidget;

/// The windows of the blocks, at most one a block: opens, wires, raises and closes them. What the device says
/// comes in through the first signals, which reach every open editor; what the user changes leaves by the
/// last ones. Closes what is open when it goes.
class BlockEditors : public QObject
{
    Q_OBJECT

public:
    /// The editors stay above @p window, which outlives this object, look like it, and read @p caches.
    BlockEditors(const QWidget *window, std::shared_ptr<const SectionCaches> caches);
    ~BlockEditors() override;

    /// Shows the block's editor in front of other windows. Makes it where there is none.
    void open(Block block);
    /// The editor may be on the stack: it hides now, hears and reports nothing more, and is deleted when
    /// control is back in the event loop.
    void close(Block block);
    void closeAll();

    /// Shown by every editor, open or opened later.
    void setDeviceName(const QString &name);

signals:
    void dataChanged();
    void meteringLevels(QByteArray levels);
    void usbMode(int ch, int type);
    void usbHostStatusChanged(QString volume, QString mute);
    void toneShown(QPair<int, QVariant> record);

    void stripChanged(Block block, QPair<int, QPair<int, QVariant>> change);
    void crosspointChanged(QPair<QPair<int, int>, QPair<int, QVariant>> change);
    void toneChanged(QPair<int, QVariant> change);

private:
    void keepAboveWindow(BlockEditor *editor) const;
    void wire(Block block, BlockEditor *editor);

    const QWidget *m_window;
    QString m_deviceName;
    std::shared_ptr<const SectionCaches> m_caches;
    std::array<BlockEditor *, BlockCount> m_editors{}; ///< null while closed
};
