// USB audio mode, priority and connection.

#include "editor/tarnkbx_main_window.h"

#include "protocol/value_words.h"

#include "ui_main_window.h"

#include <QSignalBlocker>

namespace {

constexpr int SoundCardIndex = 0;
constexpr int SpeakerphoneIndex = 1;
// The second channel of each direction; a speakerphone has one only.
constexpr int SecondUsbChannel = 1;

} // namespace

void TarnKBX_MainWindow::showUsbStatus()
{
    const QString state = json::text(m_caches->object(Section::StatusUsb), "state");
    ui->usb_connection_vmled->setState(state != QLatin1String("disconnected"));
}

void TarnKBX_MainWindow::showUsbSettings()
{
    const QSignalBlocker quietPriority(ui->usb_priority_checkBox);
    const QSignalBlocker quietMode(ui->usb_audio_mode_comboBox);
    const QSignalBlocker quietEcho(ui->usb_mode_aec_checkBox);
    const QJsonObject settings = m_caches->object(Section::Usb);
    const words::UsbMode mode = words::usbMode(json::text(settings, "mode"));
    ui->usb_priority_checkBox->setChecked(json::flag(settings, "priority"));
    ui->usb_audio_mode_comboBox->setCurrentIndex(mode.speakerphone ? SpeakerphoneIndex : SoundCardIndex);
    ui->usb_audio_mode_opt_widget->setVisible(mode.speakerphone);
    if (mode.speakerphone) {
        // In a sound card the options keep what they were, for the way back.
        ui->usb_mode_aec_checkBox->setChecked(mode.echoCancellation);
        ui->usb_mode_telephony_checkBox->setChecked(mode.telephony);
    }
    emit usbMode(SecondUsbChannel, mode.speakerphone ? 0 : 1);
}

void TarnKBX_MainWindow::sendUsbMode()
{
    const bool speakerphone = ui->usb_audio_mode_comboBox->currentIndex() != SoundCardIndex;
    ui->usb_audio_mode_opt_widget->setVisible(speakerphone);
    sendSet(setting::UsbMode,
            words::usbModeWord({speakerphone, ui->usb_mode_aec_checkBox->isChecked(),
                                ui->usb_mode_telephony_checkBox->isChecked()}));
}
