// Bluetooth settings, pairing, and remote control of the phone's player.

#include "editor/tarnkbx_main_window.h"

#include "editor/bt_priority_pairing_dialog.h"
#include "editor/rssi_band.h"
#include "editor/widgets_in_use.h"
#include "protocol/paths.h"
#include "protocol/value_words.h"

#include "ui_main_window.h"

#include <QSignalBlocker>

namespace {

QString text(const QJsonObject &object, const char *member)
{
    return object.value(QLatin1String(member)).toString();
}

bool isConnected(const QString &state)
{
    return state != QLatin1String("idle") && state != QLatin1String("discoverable");
}

} // namespace

void TarnKBX_MainWindow::showBluetoothStatus()
{
    const QJsonObject status = m_caches->object(Section::StatusBluetooth);
    const QJsonObject device = status.value(QLatin1String("device")).toObject();
    const QString state = text(status, "state");
    ui->bt_status_lineEdit->setText(state);
    ui->bt_connected_dev_lineEdit->setText(isConnected(state) ? text(device, "name") : QString());
    on_bt_sig_spinBox_valueChanged(device.value(QLatin1String("rssi")).toInt());
    ui->bt_album_label->setText(text(device, "album"));
    ui->bt_artist_label->setText(text(device, "artist"));
    ui->bt_track_label->setText(text(device, "song"));
    // An open dialog holds ticks that the user has not applied yet.
    if (m_priorityDialog && !m_priorityDialog->isVisible())
        m_priorityDialog->update(status);
}

void TarnKBX_MainWindow::on_bt_sig_spinBox_valueChanged(int arg1)
{
    const QSignalBlocker quiet(ui->bt_sig_spinBox);
    const bool connected = isConnected(text(m_caches->object(Section::StatusBluetooth), "state"));
    const SignalBand band = connected ? signalBand(arg1) : SignalBand::None;
    ui->bt_sig_good_vmled->setState(band == SignalBand::Good);
    ui->bt_sig_avg_vmled->setState(band == SignalBand::Average);
    ui->bt_sig_bad_vmled->setState(band == SignalBand::Bad);
    ui->bt_sig_spinBox->setValue(connected ? arg1 : NoSignal);
}

void TarnKBX_MainWindow::showBluetoothSettings()
{
    const QSignalBlocker quietEnable(ui->bt_interface_en_checkBox);
    const QSignalBlocker quietButton(ui->bt_disable_pairing_button_checkBox);
    const QSignalBlocker quietMode(ui->bt_connection_mode_comboBox);
    const QSignalBlocker quietProfile(ui->bt_audio_bridging_comboBox);
    const QJsonObject settings = m_caches->object(Section::Bluetooth);
    const bool enabled = settings.value(QLatin1String("enable")).toBool();
    ui->bt_interface_en_checkBox->setChecked(enabled);
    ui->bt_tabWidget->setEnabled(enabled);
    ui->bt_disable_pairing_button_checkBox->setChecked(settings.value(QLatin1String("button")).toBool());
    const QString name = text(settings, "name");
    // Only a new name: an unchanged one must not overwrite what the user is typing.
    if (name != m_bluetoothName) {
        m_bluetoothName = name;
        ui->bt_friendly_name_lineEdit->setText(name);
    }
    ui->bt_connection_mode_comboBox->setCurrentIndex(
        words::connectionModeIndex(text(settings, "connection_mode")));
    ui->bt_audio_bridging_comboBox->setCurrentIndex(words::profileIndex(text(settings, "profile")));
}

void TarnKBX_MainWindow::on_bt_interface_en_checkBox_clicked(bool checked)
{
    sendSet(path::BluetoothEnable, checked);
}

void TarnKBX_MainWindow::on_bt_disable_pairing_button_checkBox_clicked(bool checked)
{
    sendSet(path::BluetoothButton, checked);
}

void TarnKBX_MainWindow::on_bt_friendly_name_lineEdit_editingFinished()
{
    // Only the Apply button sends the name.
}

void TarnKBX_MainWindow::on_bt_apply_friendly_name_pushButton_clicked()
{
    sendSet(path::BluetoothName, ui->bt_friendly_name_lineEdit->text());
}

void TarnKBX_MainWindow::on_bt_connection_mode_comboBox_currentIndexChanged(int)
{
    const auto widgets = keepWidgets();
    sendSet(path::BluetoothConnectionMode,
            words::connectionModeWord(ui->bt_connection_mode_comboBox->currentIndex()));
}

void TarnKBX_MainWindow::on_bt_audio_bridging_comboBox_currentIndexChanged(int)
{
    const auto widgets = keepWidgets();
    sendSet(path::BluetoothProfile, words::profileWord(ui->bt_audio_bridging_comboBox->currentIndex()));
}

void TarnKBX_MainWindow::on_bt_activate_pairing_pushButton_clicked()
{
    sendSet(path::BluetoothPair, true);
}

void TarnKBX_MainWindow::on_bt_close_connection_pushButton_clicked()
{
    sendSet(path::BluetoothDisconnect, true);
}

void TarnKBX_MainWindow::on_bt_clear_pairing_pushButton_clicked()
{
    sendSet(path::BluetoothClearList, true);
}

void TarnKBX_MainWindow::on_bt_priority_pairing_pushButton_clicked()
{
    m_priorityDialog->show();
    m_priorityDialog->raise();
}

void TarnKBX_MainWindow::on_avrcp_play_pushButton_clicked()
{
    sendSet(path::BluetoothPlay, true);
}

void TarnKBX_MainWindow::on_avrcp_pause_pushButton_clicked()
{
    sendSet(path::BluetoothPause, true);
}

void TarnKBX_MainWindow::on_avrcp_prev_pushButton_clicked()
{
    sendSet(path::BluetoothPrevious, true);
}

void TarnKBX_MainWindow::on_avrcp_next_pushButton_clicked()
{
    sendSet(path::BluetoothNext, true);
}

void TarnKBX_MainWindow::on_avrcp_vol_dn_pushButton_clicked()
{
    sendSet(path::BluetoothVolumeDown, true);
}

void TarnKBX_MainWindow::on_avrcp_vol_up_pushButton_clicked()
{
    sendSet(path::BluetoothVolumeUp, true);
}
