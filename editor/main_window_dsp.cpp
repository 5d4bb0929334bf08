// The block editors from the window's side: what they hear of the device, and the messages of what the user
// changes in them.

#include "editor/tarnkbx_main_window.h"

#include "dsp/mixer_section.h"
#include "dsp/strip_variant.h"
#include "protocol/messages.h"
#include "protocol/paths.h"

/// The window itself hears dataChanged() first, by a connection made before: its onDataChanged() says which
/// USB channels are available, and editors leave the strips of the others alone.
void TarnKBX_MainWindow::connectBlockEditors()
{
    using W = TarnKBX_MainWindow;
    connect(this, &W::dataChanged, &m_blocks, &BlockEditors::dataChanged);
    connect(this, &W::meteringLevels, &m_blocks, &BlockEditors::meteringLevels);
    connect(this, &W::usbMode, &m_blocks, &BlockEditors::usbMode);
    connect(this, &W::usb_host_status_changed, &m_blocks, &BlockEditors::usbHostStatusChanged);
    connect(this, &W::funcGenChanged, &m_blocks, &BlockEditors::toneShown);
    connect(&m_blocks, &BlockEditors::stripChanged, this, &W::sendStripChange);
    connect(&m_blocks, &BlockEditors::crosspointChanged, this, &W::onUiDspMatrixChanged);
    connect(&m_blocks, &BlockEditors::toneChanged, this, &W::onUiDspToneGenChanged);
}

void TarnKBX_MainWindow::sendStripChange(Block block, const QPair<int, QPair<int, QVariant>> &change)
{
    const BlockInfo &info = blockInfo(block);
    const int parameter = change.second.first;
    const QVariant &value = change.second.second;
    if (parameter == info.strips->muteParameter())
        sendSet(setting::channelMute(info.section, change.first), value.toBool());
    else if (parameter == info.strips->gainParameter())
        sendSet(setting::channelGain(info.section, change.first), message::wholeGain(value.toDouble()));
}

void TarnKBX_MainWindow::onMatrixMixerClicked()
{
    m_blocks.open(Block::Mixer);
    showToneGenerator();
}

void TarnKBX_MainWindow::showToneGenerator()
{
    const QJsonObject tone = m_caches->object(Section::ToneGenerator);
    emit funcGenChanged({ToneEnable, json::flag(tone, "enable")});
    emit funcGenChanged({ToneFrequency, json::number(tone, "frequency")});
    emit funcGenChanged({ToneLevel, json::number(tone, "amplitude")});
}

void TarnKBX_MainWindow::onUiDspMatrixChanged(QPair<QPair<int, int>, QPair<int, QVariant>> change)
{
    if (change.second.first == CrosspointLevel)
        storeCrosspoint((*m_caches)[Section::Mixer], change.first.first, change.first.second,
                        roundedLevel(change.second.second.toDouble()));
    m_mixerChangeTimer.start();
}

void TarnKBX_MainWindow::handle_mixer_changed()
{
    sendCommand(path::Mixer, m_caches->value(Section::Mixer));
}

void TarnKBX_MainWindow::onUiDspToneGenChanged(QPair<int, QVariant> change)
{
    switch (change.first) {
    case ToneEnable:
        sendSet(setting::ToneEnable, change.second.toBool());
        break;
    case ToneFrequency:
        sendSet(setting::ToneFrequency, change.second.toInt());
        break;
    case ToneLevel:
        sendSet(setting::ToneAmplitude, change.second.toInt());
        break;
    default:
        break;
    }
}
