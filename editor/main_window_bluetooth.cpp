// Bluetooth settings, pairing, and remote control of the phone's player.

#include "editor/tarnkbx_main_window.h"

#include "editor/bt_priority_pairing_dialog.h"
#include "editor/field_text.h"
#include "editor/rssi_band.h"
#include "protocol/paths.h"
#include "protocol/value_words.h"

#include "ui_main_window.h"

#include <QSignalBlocker>

namespace {

bool isConnected(const QString &state)
{
    return state != QLatin1String("idle") && state != QLatin1String("discoverable");
}

} // namespace

void TarnKBX_MainWindow::showBluetoothStatus()
{
    const QJsonObject status = m_caches->object(Section::StatusBluetooth);
    const QJsonObject device = json::object(status, "device");
    const QString state = json::text(status, "state");
    showText(ui->bt_status_lineEdit, state);
    showText(ui->bt_connected_dev_lineEdit, isConnected(state) ? json::text(device, "name") : QString());
    showSignal(isConnected(state), json::number(device, "rssi"));
    ui->bt_album_label->setText(json::text(device, "album"));
    ui->bt_artist_label->setText(json::text(device, "artist"));
    ui->bt_track_label->setText(json::text(device, "song"));
    // An open dialog holds ticks that the user has not applied yet.
    if (m_priorityDialog && !m_priorityDialog->isVisible())
        m_priorityDialog->showStatus(status);
}

void TarnKBX_MainWindow::on_bt_sig_spinBox_valueChanged(int arg1)
{
    showSignal(isConnected(json::text(m_caches->object(Section::StatusBluetooth), "state")), arg1);
}

/// @p rssi in dBm.
void TarnKBX_MainWindow::showSignal(bool connected, int rssi)
{
    const QSignalBlocker quiet(ui->bt_sig_spinBox);
    const SignalBand band = connected ? signalBand(rssi) : SignalBand::None;
    ui->bt_sig_good_vmled->setState(band == SignalBand::Good);
    ui->bt_sig_avg_vmled->setState(band == SignalBand::Average);
    ui->bt_sig_bad_vmled->setState(band == SignalBand::Bad);
    ui->bt_sig_spinBox->setValue(connected ? rssi : NoSignal);
}

void TarnKBX_MainWindow::showBluetoothSettings()
{
    const QSignalBlocker quietEnable(ui->bt_interface_en_checkBox);
    const QSignalBlocker quietButton(ui->bt_disable_pairing_button_checkBox);
    const QSignalBlocker quietMode(ui->bt_connection_mode_comboBox);
    const QSignalBlocker quietProfile(ui->bt_audio_bridging_comboBox);
    const QJsonObject settings = m_caches->object(Section::Bluetooth);
    const bool enabled = json::flag(settings, "enable");
    ui->bt_interface_en_checkBox->setChecked(enabled);
    ui->bt_tabWidget->setEnabled(enabled);
    ui->bt_disable_pairing_button_checkBox->setChecked(json::flag(settings, "button"));
    const QString name = json::text(settings, "name");
    // Only a new name: an unchanged one must not overwrite what the user is typing.
    if (name != m_bluetoothName) {
        m_bluetoothName = name;
        ui->bt_friendly_name_lineEdit->setText(name);
    }
    ui->bt_connection_mode_comboBox->setCurrentIndex(
        words::connectionModeIndex(json::text(settings, "connection_mode")));
    ui->bt_audio_bridging_comboBox->setCurrentIndex(words::profileIndex(json::text(settings, "profile")));
}

void TarnKBX_MainWindow::on_bt_friendly_name_lineEdit_editingFinished()
{
    // Only the Apply button sends the name.
}

void TarnKBX_MainWindow::on_bt_apply_friendly_name_pushButton_clicked()
{
    sendSet(setting::BluetoothName, ui->bt_friendly_name_lineEdit->text());
}

void TarnKBX_MainWindow::on_bt_connection_mode_comboBox_currentIndexChanged(int)
{
    sendSet(setting::BluetoothMode,
            words::connectionModeWord(ui->bt_connection_mode_comboBox->currentIndex()));
}

void TarnKBX_MainWindow::on_bt_audio_bridging_comboBox_currentIndexChanged(int)
{
    sendSet(setting::BluetoothProfile, words::profileWord(ui->bt_audio_bridging_comboBox->currentIndex()));
}

void TarnKBX_MainWindow::on_bt_priority_pairing_pushButton_clicked()
{
    m_priorityDialog->show();
    m_priorityDialog->raise();
}
