#pragma once

#include "dsp/block_editors.h"
#include "protocol/settings.h"

#include <QMainWindow>
#include <QPair>
#include <QPointer>
#include <QScopedPointer>
#include <QTimer>
#include <QVariant>

#include <array>
#include <memory>

class BtPriorityPairingDialog;
class DerivedStateMachine;
class LeftFieldCheck;
class MeteringSocket;
class PlexoPlugin;
class QCheckBox;
class QLineEdit;
struct WidgetsInUse;

namespace Ui {
class TarnKBX_MainWindow;
}

/// The device editor: shows the cached state of one TarnKBX, sends what the user changes, and takes over
/// what the device confirms.
///
/// Everything runs on the GUI thread. The parent is the plugin object; the host may destroy it, and the
/// window with it, from any slot connected to one of the plugin's signals and while a box is open.
/// The implementation has one source file a topic, main_window_*.cpp.
class TarnKBX_MainWindow : public QMainWindow, public DeviceStateOwner
{
    Q_OBJECT

public:
    /// Without a plugin object as parent the window shows its widgets and sends nothing.
    explicit TarnKBX_MainWindow(QWidget *parent = nullptr);
    ~TarnKBX_MainWindow() override;

    SectionCaches &caches() override { return *m_caches; }
    ReplyHandlerTable &getHandlers() override { return m_getHandlers; }

    /// Takes every reply of the device; ignores what is not an "OK" reply of the attached device.
    void handleAsciiReply(QString dev_name, QByteArray bytes);
    /// Nothing of an earlier device may be shown, or sent, as if it were of the next one.
    void forgetDevice();
    /// Reads the whole device state again.
    void restartQuery();
    /// Disables the editor until the whole device state has been read again.
    void reloadDevice();

    void statusRefresh();
    void settingsRefresh() override;

    void getSnapshot(QByteArray *out);
    bool checkSnapshot(const QByteArray &snapshot);
    void applySnapshot(const QByteArray &snapshot);
    /// @p preset is the device's slot number.
    void loadPreset(int preset);
    void savePreset(int preset);

    /// Whether the field holds an acceptable address or port; warns the user in a box if not.
    bool validateIpField(QLineEdit *field);
    bool validatePortField(QLineEdit *field);

public slots:
    void handle_device_changed();
    void handle_query_finished();
    void request_level_msgs();
    void onBtInGainClicked() { m_blocks.open(Block::BtIn); }
    void onBtInGainClosed() { m_blocks.close(Block::BtIn); }
    void onNetRxGainClicked() { m_blocks.open(Block::NetRx); }
    void onNetRxGainClosed() { m_blocks.close(Block::NetRx); }
    void onUsbInGainClicked() { m_blocks.open(Block::UsbIn); }
    void onUsbInGainClosed() { m_blocks.close(Block::UsbIn); }
    void onMatrixMixerClicked();
    void onMatrixMixerClosed() { m_blocks.close(Block::Mixer); }
    void onBtOutGainClicked() { m_blocks.open(Block::BtOut); }
    void onBtOutGainClosed() { m_blocks.close(Block::BtOut); }
    void onNetTxGainClicked() { m_blocks.open(Block::NetTx); }
    void onNetTxGainClosed() { m_blocks.close(Block::NetTx); }
    void onUsbOutGainClicked() { m_blocks.open(Block::UsbOut); }
    void onUsbOutGainClosed() { m_blocks.close(Block::UsbOut); }
    void onUiDspBtInStripChange(QPair<int, QPair<int, QVariant>> change)
    {
        sendStripChange(Block::BtIn, change);
    }
    void onUiDspNetRxStripChanged(QPair<int, QPair<int, QVariant>> change)
    {
        sendStripChange(Block::NetRx, change);
    }
    void onUiDspUsbInStripChanged(QPair<int, QPair<int, QVariant>> change)
    {
        sendStripChange(Block::UsbIn, change);
    }
    void onUiDspBtOutStripChange(QPair<int, QPair<int, QVariant>> change)
    {
        sendStripChange(Block::BtOut, change);
    }
    void onUiDspNetTxStripChanged(QPair<int, QPair<int, QVariant>> change)
    {
        sendStripChange(Block::NetTx, change);
    }
    void onUiDspMatrixChanged(QPair<QPair<int, int>, QPair<int, QVariant>> change);
    void onUiDspToneGenChanged(QPair<int, QVariant> change);
    void onUiDspUsbOutStripChanged(QPair<int, QPair<int, QVariant>> change)
    {
        sendStripChange(Block::UsbOut, change);
    }
    void reboot_close();
    void onStatusPoll();
    void request_close();
    void on_close_pushButton_clicked();
    void on_identify_checkBox_clicked(bool checked) { sendCommand(path::Identify, checked); }
    void on_refresh_pushButton_clicked() { reloadDevice(); }
    void updatePluginStatus(QString msg, bool highlight);
    void handleSmGetRequest(QString dev_name, QByteArray bytes);

private slots:
    void handle_mixer_changed();
    void onDataChanged();
    void readPendingMulticastMetering();
    void on_factory_reset_pushButton_clicked();

    void on_bt_interface_en_checkBox_clicked(bool checked) { sendSet(setting::BluetoothEnable, checked); }
    void on_bt_disable_pairing_button_checkBox_clicked(bool checked)
    {
        sendSet(setting::BluetoothButton, checked);
    }
    void on_bt_friendly_name_lineEdit_editingFinished();
    void on_bt_apply_friendly_name_pushButton_clicked();
    void on_bt_connection_mode_comboBox_currentIndexChanged(int index);
    void on_bt_audio_bridging_comboBox_currentIndexChanged(int index);
    void on_bt_activate_pairing_pushButton_clicked() { sendCommand(path::BluetoothPair); }
    void on_bt_close_connection_pushButton_clicked() { sendCommand(path::BluetoothDisconnect); }
    void on_bt_clear_pairing_pushButton_clicked() { sendCommand(path::BluetoothClearList); }
    void on_bt_priority_pairing_pushButton_clicked();
    void on_bt_sig_spinBox_valueChanged(int arg1);
    void on_avrcp_play_pushButton_clicked() { sendCommand(path::BluetoothPlay); }
    void on_avrcp_pause_pushButton_clicked() { sendCommand(path::BluetoothPause); }
    void on_avrcp_prev_pushButton_clicked() { sendCommand(path::BluetoothPrevious); }
    void on_avrcp_next_pushButton_clicked() { sendCommand(path::BluetoothNext); }
    void on_avrcp_vol_dn_pushButton_clicked() { sendCommand(path::BluetoothVolumeDown); }
    void on_avrcp_vol_up_pushButton_clicked() { sendCommand(path::BluetoothVolumeUp); }

    void on_usb_audio_mode_comboBox_currentIndexChanged(int) { sendUsbMode(); }
    void on_usb_mode_aec_checkBox_clicked(bool) { sendUsbMode(); }
    void on_usb_mode_telephony_checkBox_clicked(bool) { sendUsbMode(); }
    void on_usb_priority_checkBox_clicked(bool checked) { sendSet(setting::UsbPriority, checked); }
    void on_vc_pair_init_en_checkBox_clicked(bool checked) { sendSet(setting::cueEnable(0), checked); }
    void on_vc_pair_end_en_checkBox_clicked(bool checked) { sendSet(setting::cueEnable(1), checked); }
    void on_vc_pair_success_en_checkBox_clicked(bool checked) { sendSet(setting::cueEnable(2), checked); }
    void on_vc_connect_failed_en_checkBox_clicked(bool checked) { sendSet(setting::cueEnable(3), checked); }
    void on_vc_pair_init_play_pushButton_clicked() { sendCommand(path::indexed(path::VoiceCuePlay, 0)); }
    void on_vc_pair_end_play_pushButton_clicked() { sendCommand(path::indexed(path::VoiceCuePlay, 1)); }
    void on_vc_pair_success_play_pushButton_clicked() { sendCommand(path::indexed(path::VoiceCuePlay, 2)); }
    void on_vc_connect_failed_play_pushButton_clicked() { sendCommand(path::indexed(path::VoiceCuePlay, 3)); }
    void on_vc_pair_init_load_pushButton_clicked() { loadUserCue(0); }
    void on_vc_pair_end_load_pushButton_clicked() { loadUserCue(1); }
    void on_vc_pair_success_load_pushButton_clicked() { loadUserCue(2); }
    void on_vc_connect_failed_load_pushButton_clicked() { loadUserCue(3); }
    void on_vc_pair_init_def_pushButton_clicked() { loadDefaultCue(0); }
    void on_vc_pair_end_def_pushButton_clicked() { loadDefaultCue(1); }
    void on_vc_pair_success_def_pushButton_clicked() { loadDefaultCue(2); }
    void on_vc_connect_failed_def_pushButton_clicked() { loadDefaultCue(3); }
    void helper_load_user_vc_file(QString file, QString id, QByteArray recording);

    void on_reboot_pushButton_clicked();

    void on_dev_static_ip_checkBox_clicked(bool checked);
    void on_dev_ip_lineEdit_editingFinished();
    void on_dev_netmask_lineEdit_editingFinished();
    void on_dev_gateway_lineEdit_editingFinished();
    void on_dev_network_apply_pushButton_clicked();
    void on_en_multicast_async_notify_checkBox_clicked(bool checked)
    {
        sendSet(setting::NotificationsEnable, checked);
    }
    void on_multicast_async_notify_ip_lineEdit_editingFinished();
    void on_multicast_async_notify_port_lineEdit_editingFinished();
    void on_multicast_async_notify_apply_pushButton_clicked();
    void on_multicast_metering_ip_lineEdit_editingFinished();
    void on_multicast_metering_port_lineEdit_editingFinished();
    void on_multicast_metering_apply_pushButton_clicked();

signals:
    /// The cached state changed: widgets and open block editors show it again.
    void dataChanged();
    /// USB channel @p ch became available (@p type 1) or unavailable (0).
    void usbMode(int ch, int type);
    /// One level datagram, unchanged.
    void meteringLevels(QByteArray levels);
    /// One value of the tone generator: 100 enable, 101 frequency in Hz, 102 level in dB.
    void funcGenChanged(QPair<int, QVariant> value);
    /// Volume and mute texts of the USB host.
    void usb_host_status_changed(QString volume, QString mute);

protected:
    void resizeEvent(QResizeEvent *event) override;

private:
    // Life cycle
    void hideUnusedWidgets();
    void createPriorityDialog();
    void connectPlugin();
    void prepareTimers();
    std::shared_ptr<WidgetsInUse> keepWidgets();
    void leaveWidgetsInUse();
    bool confirmOverEditor(const QString &title, const QString &text);

    // Replies
    void handleGetReply(const QString &param, const QJsonObject &reply);
    void handleSetReply(const QString &param, const QJsonObject &reply);
    void handleBinaryReply(const QString &cmd, const QString &param, const QByteArray &bytes);
    void advanceQuery();
    void withdrawPolls();

    // Commands
    QString deviceName() const;
    void issue(const QString &path, const QByteArray &bytes, const ReplyHandler &handler);
    /// Asks for a change of a setting; its confirmation is taken over.
    void sendSet(const Setting &setting, const QJsonValue &value);
    /// Sends what is no setting: nothing is taken over.
    void sendCommand(const QString &path, const QJsonValue &value = true);
    void requestPreset(QLatin1String path, int preset);
    void refuseSnapshot();
    void applySection(const SectionInfo &info, const QJsonObject &content);
    void applyMixer(const QJsonObject &content);

    // Bluetooth, USB and voice cues
    void showBluetoothStatus();
    void showSignal(bool connected, int rssi);
    void showBluetoothSettings();
    void showUsbStatus();
    void showUsbSettings();
    void sendUsbMode();
    void showVoiceCueStatus();
    void showVoiceCueSettings();
    void loadUserCue(int cue);
    void loadDefaultCue(int cue);
    void stopForCueLoad();
    void resumeAfterCueLoad();
    void warnNoLocalAddress();
    std::array<QCheckBox *, 4> cueEnableBoxes() const;

    // Network
    void showNetworkSettings();
    void showNotificationSettings();
    void showMeteringSettings();
    void moveMeteringSocket();
    using FieldCheck = bool (TarnKBX_MainWindow::*)(QLineEdit *field);
    void watchFields();
    void finishEdit(QLineEdit *field, FieldCheck check);
    bool checkField(QLineEdit *field, FieldCheck check);
    bool warnAbout(QLineEdit *field, const QString &problem);
    bool checkAddress(QLineEdit *field);
    bool checkPort(QLineEdit *field);

    // Block editors
    void connectBlockEditors();
    void sendStripChange(Block block, const QPair<int, QPair<int, QVariant>> &change);
    void showToneGenerator();

    QScopedPointer<Ui::TarnKBX_MainWindow> ui;
    QPointer<PlexoPlugin> m_plugin;

    std::shared_ptr<SectionCaches> m_caches = std::make_shared<SectionCaches>();
    BlockEditors m_blocks{this, m_caches};
    ReplyHandlerTable m_getHandlers;
    ReplyHandlerTable m_setHandlers;
    QHash<QString, void (*)(QObject *)> m_setNotices;
    QHash<QString, void (*)(QObject *, QByteArray)> m_binaryGetHandlers;
    QHash<QString, void (*)(QObject *, QByteArray)> m_binarySetHandlers;

    DerivedStateMachine *m_query = nullptr; ///< child of the window
    bool m_queryFinished = false;
    bool m_awaitingFirstQuery = true;
    bool m_hasPolled = false; ///< since the last query was started
    bool m_awaitingPollReply = false; ///< the next reply answers a get that was under way before the query

    QTimer m_queryRetryTimer{this};
    QTimer m_meteringRequestTimer{this};
    QTimer m_mixerChangeTimer{this};
    QTimer m_statusPollTimer{this};
    QTimer m_closeTimer{this}; ///< from the answer to the last command
    QTimer m_rebootTimer{this}; ///< from the reboot command to closing
    QTimer m_resetTimer{this}; ///< from the factory reset to closing

    std::weak_ptr<WidgetsInUse> m_widgetsInUse; ///< held by slots whose sender is used after them

    bool m_droppedForCueLoad = false; ///< requests were waiting when the last cue load cleared the channel
    QString m_bluetoothName; ///< friendly name last taken over from the device
    LeftFieldCheck *m_leftField = nullptr; ///< child of the window
    MeteringSocket *m_meteringSocket = nullptr; ///< child of the window
    BtPriorityPairingDialog *m_priorityDialog = nullptr; ///< child of the window
};
