#include "dsp/strip_editors.h"

#include "dsp/channel_strips.h"
#include "ui_dsp_usb_host.h"

NetRxForm::NetRxForm(uchar channels, const QJsonObject *section, QWidget *parent)
    : StripEditor(netRxVariant, newStrip<NetRxChStrip>, channels, section, parent)
{
}

UsbInForm::UsbInForm(uchar channels, const QJsonObject *section, QWidget *parent)
    : StripEditor(usbInVariant, newStrip<UsbInChStrip>, channels, section, parent)
{
    auto *host = new QWidget(this);
    Ui::DspUsbHost ui;
    ui.setupUi(host);
    host->hide();
    addBelowStrips(host);
    m_hostVolume = ui.usb_host_vol_lineEdit;
    m_hostMute = ui.usb_host_mute_lineEdit;
}

void UsbInForm::onUsbMode(int ch, int type)
{
    setChannelAvailability(ch, type);
}

void UsbInForm::onUsbHostStatus(const QString &volume, const QString &mute)
{
    m_hostVolume->setText(volume);
    m_hostMute->setText(mute);
}

BtInForm::BtInForm(uchar channels, const QJsonObject *section, QWidget *parent)
    : StripEditor(btInVariant, newStrip<BtInChStrip>, channels, section, parent)
{
}

NetTxForm::NetTxForm(uchar channels, const QJsonObject *section, QWidget *parent)
    : StripEditor(netTxVariant, newStrip<NetTxChStrip>, channels, section, parent)
{
}

UsbOutForm::UsbOutForm(uchar channels, const QJsonObject *section, QWidget *parent)
    : StripEditor(usbOutVariant, newStrip<UsbOutChStrip>, channels, section, parent)
{
}

void UsbOutForm::onUsbMode(int ch, int type)
{
    setChannelAvailability(ch, type);
}

BtOutForm::BtOutForm(uchar channels, const QJsonObject *section, QWidget *parent)
    : StripEditor(btOutVariant, newStrip<BtOutChStrip>, channels, section, parent)
{
}
