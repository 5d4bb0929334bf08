// The block editors: opening, wiring, closing, and the messages of what the user changes in them.

#include "editor/tarnkbx_main_window.h"

#include "dsp/matrix_mixer_form.h"
#include "dsp/strip_editors.h"
#include "protocol/messages.h"
#include "protocol/paths.h"

#include <QStringList>

namespace {

constexpr int MixerDebounceMs = 250;

template <typename Form>
StripEditor *newEditor(const StripVariant &variant, const QJsonObject *section)
{
    return new Form(variant.channels, section);
}

QStringList sourceLabels()
{
    return {QStringLiteral("Net RX 1"), QStringLiteral("Net RX 2"), QStringLiteral("Net RX 3"),
            QStringLiteral("Net RX 4"), QStringLiteral("USB IN 1"), QStringLiteral("USB IN 2"),
            QStringLiteral("BT IN 1"),  QStringLiteral("BT IN 2"),  QStringLiteral("Voice Cue"),
            QStringLiteral("Tone Gen")};
}

/// "|" is a line break of the column header.
QStringList sinkLabels()
{
    return {QStringLiteral("Net|TX 1"), QStringLiteral("Net|TX 2"),  QStringLiteral("Net|TX 3"),
            QStringLiteral("Net|TX 4"), QStringLiteral("USB|OUT 1"), QStringLiteral("USB|OUT 2"),
            QStringLiteral("BT|OUT 1")};
}

void dress(BlockEditor *editor, const QString &styleSheet)
{
    editor->setStyleSheet(styleSheet);
    editor->setModal(false);
    editor->setWindowFlag(Qt::WindowContextHelpButtonHint, false);
}

/// The editor may be on the stack: it goes when control is back in the event loop, and is not seen until
/// then. The caches that it reads stay for as long.
void discard(BlockEditor *editor, const std::shared_ptr<SectionCaches> &caches)
{
    QObject::connect(editor, &QObject::destroyed, [caches] { Q_UNUSED(caches) });
    editor->hide();
    editor->deleteLater();
}

} // namespace

/// What the window needs to know of a block with channel strips.
struct TarnKBX_MainWindow::StripBlockInfo
{
    const StripVariant &variant;
    StripEditor *(*create)(const StripVariant &, const QJsonObject *);
    void (TarnKBX_MainWindow::*closed)();
    void (TarnKBX_MainWindow::*changed)(QPair<int, QPair<int, QVariant>>);
};

const TarnKBX_MainWindow::StripBlockInfo &TarnKBX_MainWindow::stripBlock(StripBlock block)
{
    using W = TarnKBX_MainWindow;
    static const std::array<StripBlockInfo, StripBlockCount> Blocks = {{
        {btInVariant, newEditor<BtInForm>, &W::onBtInGainClosed, &W::onUiDspBtInStripChange},
        {netRxVariant, newEditor<NetRxForm>, &W::onNetRxGainClosed, &W::onUiDspNetRxStripChanged},
        {usbInVariant, newEditor<UsbInForm>, &W::onUsbInGainClosed, &W::onUiDspUsbInStripChanged},
        {btOutVariant, newEditor<BtOutForm>, &W::onBtOutGainClosed, &W::onUiDspBtOutStripChange},
        {netTxVariant, newEditor<NetTxForm>, &W::onNetTxGainClosed, &W::onUiDspNetTxStripChanged},
        {usbOutVariant, newEditor<UsbOutForm>, &W::onUsbOutGainClosed, &W::onUiDspUsbOutStripChanged},
    }};
    return Blocks[size_t(block)];
}

void TarnKBX_MainWindow::openStripEditor(StripBlock block)
{
    StripEditor *&editor = m_stripEditors[size_t(block)];
    if (!editor) {
        const StripBlockInfo &info = stripBlock(block);
        editor = info.create(info.variant, &(*m_caches)[sectionAt(info.variant.sectionPath)->section]);
        dress(editor, styleSheet());
        editor->setBlockTitle(info.variant.windowTitle);
        connectStripEditor(block);
        editor->show();
    }
    editor->bringToFront();
}

void TarnKBX_MainWindow::connectStripEditor(StripBlock block)
{
    const StripBlockInfo &info = stripBlock(block);
    StripEditor *editor = m_stripEditors[size_t(block)];
    connect(editor, &BlockEditor::close, this, info.closed);
    connect(editor, &StripEditor::uiChanged, this, info.changed);
    connect(this, &TarnKBX_MainWindow::meteringLevels, editor, &StripEditor::onLevels);
    connect(this, &TarnKBX_MainWindow::dataChanged, editor, &StripEditor::onDataChanged);
    if (auto *usbIn = qobject_cast<UsbInForm *>(editor)) {
        connect(this, &TarnKBX_MainWindow::usbMode, usbIn, &UsbInForm::onUsbMode);
        connect(this, &TarnKBX_MainWindow::usb_host_status_changed, usbIn, &UsbInForm::onUsbHostStatus);
    }
    if (auto *usbOut = qobject_cast<UsbOutForm *>(editor))
        connect(this, &TarnKBX_MainWindow::usbMode, usbOut, &UsbOutForm::onUsbMode);
}

void TarnKBX_MainWindow::closeStripEditor(StripBlock block)
{
    StripEditor *&editor = m_stripEditors[size_t(block)];
    if (!editor)
        return;
    disconnect(editor, nullptr, this, nullptr);
    disconnect(this, nullptr, editor, nullptr);
    discard(editor, m_caches);
    editor = nullptr;
}

void TarnKBX_MainWindow::closeBlockEditors()
{
    for (StripBlock block : {BtIn, NetRx, UsbIn})
        closeStripEditor(block);
    onMatrixMixerClosed();
    for (StripBlock block : {BtOut, NetTx, UsbOut})
        closeStripEditor(block);
}

void TarnKBX_MainWindow::onMatrixMixerClicked()
{
    if (!m_mixerForm)
        openMixer();
    m_mixerForm->bringToFront();
    tellToneGenerator();
}

void TarnKBX_MainWindow::openMixer()
{
    using W = TarnKBX_MainWindow;
    m_mixerForm = new MatrixMixerForm(sourceLabels(), sinkLabels(), &(*m_caches)[Section::Mixer]);
    dress(m_mixerForm, styleSheet());
    m_mixerForm->setWindowTitle(QStringLiteral("Matrix Mixer"));
    connect(m_mixerForm, &BlockEditor::close, this, &W::onMatrixMixerClosed);
    connect(m_mixerForm, &MatrixMixerForm::uiMixChanged, this, &W::onUiDspMatrixChanged);
    connect(m_mixerForm, &MatrixMixerForm::uiTonGenChanged, this, &W::onUiDspToneGenChanged);
    connect(this, &W::meteringLevels, m_mixerForm, &MatrixMixerForm::onLevels);
    connect(this, &W::dataChanged, m_mixerForm, &MatrixMixerForm::onDataChanged);
    connect(this, &W::funcGenChanged, m_mixerForm, &MatrixMixerForm::onToneGenChanged);
    connect(this, &W::usbMode, m_mixerForm, &MatrixMixerForm::onUsbMode);
    m_mixerForm->show();
}

void TarnKBX_MainWindow::onMatrixMixerClosed()
{
    if (!m_mixerForm)
        return;
    disconnect(m_mixerForm, nullptr, this, nullptr);
    disconnect(this, nullptr, m_mixerForm, nullptr);
    discard(m_mixerForm, m_caches);
    m_mixerForm = nullptr;
}

void TarnKBX_MainWindow::tellToneGenerator()
{
    const QJsonObject tone = m_caches->object(Section::ToneGenerator);
    emit funcGenChanged({ToneEnable, tone.value(QLatin1String("enable")).toBool()});
    emit funcGenChanged({ToneFrequency, tone.value(QLatin1String("frequency")).toInt()});
    emit funcGenChanged({ToneLevel, tone.value(QLatin1String("amplitude")).toInt()});
}

void TarnKBX_MainWindow::sendStripChange(StripBlock block, const QPair<int, QPair<int, QVariant>> &change)
{
    const StripVariant &variant = stripBlock(block).variant;
    const QString channel = QStringLiteral("%1/%2/").arg(variant.sectionPath).arg(change.first);
    const int parameter = change.second.first;
    const QVariant &value = change.second.second;
    if (parameter == variant.muteParameter())
        sendSetNumber(channel + QLatin1String("mute"), value.toBool() ? 1 : 0);
    else if (parameter == variant.gainParameter())
        sendSetNumber(channel + QLatin1String("gain"), message::wholeGain(value.toDouble()));
}

void TarnKBX_MainWindow::onUiDspMatrixChanged(QPair<QPair<int, int>, QPair<int, QVariant>> change)
{
    if (change.second.first == CrosspointLevel)
        storeCrosspoint((*m_caches)[Section::Mixer], change.first.first, change.first.second,
                        roundedLevel(change.second.second.toDouble()));
    m_mixerChangeTimer.start(MixerDebounceMs);
}

void TarnKBX_MainWindow::handle_mixer_changed()
{
    m_mixerChangeTimer.stop();
    sendSet(path::Mixer, m_caches->value(Section::Mixer));
}

void TarnKBX_MainWindow::onUiDspToneGenChanged(QPair<int, QVariant> change)
{
    switch (change.first) {
    case ToneEnable:
        sendSetNumber(path::ToneEnable, change.second.toBool() ? 1 : 0);
        break;
    case ToneFrequency:
        sendSetNumber(path::ToneFrequency, change.second.toInt());
        break;
    case ToneLevel:
        sendSetNumber(path::ToneAmplitude, change.second.toInt());
        break;
    default:
        break;
    }
}

void TarnKBX_MainWindow::onBtInGainClicked()
{
    openStripEditor(BtIn);
}

void TarnKBX_MainWindow::onBtInGainClosed()
{
    closeStripEditor(BtIn);
}

void TarnKBX_MainWindow::onNetRxGainClicked()
{
    openStripEditor(NetRx);
}

void TarnKBX_MainWindow::onNetRxGainClosed()
{
    closeStripEditor(NetRx);
}

void TarnKBX_MainWindow::onUsbInGainClicked()
{
    openStripEditor(UsbIn);
}

void TarnKBX_MainWindow::onUsbInGainClosed()
{
    closeStripEditor(UsbIn);
}

void TarnKBX_MainWindow::onBtOutGainClicked()
{
    openStripEditor(BtOut);
}

void TarnKBX_MainWindow::onBtOutGainClosed()
{
    closeStripEditor(BtOut);
}

void TarnKBX_MainWindow::onNetTxGainClicked()
{
    openStripEditor(NetTx);
}

void TarnKBX_MainWindow::onNetTxGainClosed()
{
    closeStripEditor(NetTx);
}

void TarnKBX_MainWindow::onUsbOutGainClicked()
{
    openStripEditor(UsbOut);
}

void TarnKBX_MainWindow::onUsbOutGainClosed()
{
    closeStripEditor(UsbOut);
}

void TarnKBX_MainWindow::onUiDspBtInStripChange(QPair<int, QPair<int, QVariant>> change)
{
    sendStripChange(BtIn, change);
}

void TarnKBX_MainWindow::onUiDspNetRxStripChanged(QPair<int, QPair<int, QVariant>> change)
{
    sendStripChange(NetRx, change);
}

void TarnKBX_MainWindow::onUiDspUsbInStripChanged(QPair<int, QPair<int, QVariant>> change)
{
    sendStripChange(UsbIn, change);
}

void TarnKBX_MainWindow::onUiDspBtOutStripChange(QPair<int, QPair<int, QVariant>> change)
{
    sendStripChange(BtOut, change);
}

void TarnKBX_MainWindow::onUiDspNetTxStripChanged(QPair<int, QPair<int, QVariant>> change)
{
    sendStripChange(NetTx, change);
}

void TarnKBX_MainWindow::onUiDspUsbOutStripChanged(QPair<int, QPair<int, QVariant>> change)
{
    sendStripChange(UsbOut, change);
}
