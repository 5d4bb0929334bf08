#include "dsp/blocks.h"

#include "dsp/matrix_mixer_form.h"
#include "dsp/strip_editors.h"
#include "protocol/paths.h"

namespace {

template <typename Form, uchar Channels>
BlockEditor *newStrips(const QJsonObject *section)
{
    return new Form(Channels, section);
}

QStringList labels(const char *text)
{
    return QString::fromLatin1(text).split(QLatin1Char(','));
}

BlockEditor *newMixer(const QJsonObject *section)
{
    return new MatrixMixerForm(
        labels("Net RX 1,Net RX 2,Net RX 3,Net RX 4,USB IN 1,USB IN 2,BT IN 1,BT IN 2,Voice Cue,Tone Gen"),
        labels("Net|TX 1,Net|TX 2,Net|TX 3,Net|TX 4,USB|OUT 1,USB|OUT 2,BT|OUT 1"), section);
}

} // namespace

const std::array<BlockInfo, BlockCount> &blocks()
{
    // clang-format off
    static const std::array<BlockInfo, BlockCount> Blocks{{
        {Section::BtSink, path::literal("Bluetooth In"), &btInVariant, newStrips<BtInForm, 2>,
         {0, 0}, "btInGain", "onBtInGainClicked"},
        {Section::DanteRx, path::literal("Dante Network Rx"), &netRxVariant, newStrips<NetRxForm, 4>,
         {0, 1}, "netRxGain", "onNetRxGainClicked"},
        {Section::UsbPlayback, path::literal("USB Playback"), &usbInVariant, newStrips<UsbInForm, 2>,
         {0, 2}, "usbInGain", "onUsbInGainClicked"},
        {Section::Mixer, path::literal("Matrix Mixer"), nullptr, newMixer,
         {1, 1}, "matrixMixer", "onMatrixMixerClicked"},
        {Section::BtSource, path::literal("Bluetooth Out"), &btOutVariant, newStrips<BtOutForm, 1>,
         {2, 0}, "btOutGain", "onBtOutGainClicked"},
        {Section::DanteTx, path::literal("Dante Network Tx"), &netTxVariant, newStrips<NetTxForm, 4>,
         {2, 1}, "netTxGain", "onNetTxGainClicked"},
        {Section::UsbRecord, path::literal("USB Record"), &usbOutVariant, newStrips<UsbOutForm, 2>,
         {2, 2}, "usbOutGain", "onUsbOutGainClicked"},
    }};
    // clang-format on
    return Blocks;
}

const BlockInfo &blockInfo(Block block)
{
    return blocks()[size_t(block)];
}
