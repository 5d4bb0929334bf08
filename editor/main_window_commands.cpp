// How a command is issued, and the commands of the device panel.

#include "editor/tarnkbx_main_window.h"

#include "editor/asked_device.h"
#include "host/modal_box.h"
#include "host/plexo_plugin.h"
#include "protocol/messages.h"
#include "protocol/paths.h"

#include "ui_main_window.h"

namespace {

constexpr int CloseDelayMs = 500;
constexpr int RebootToCloseMs = 500;
constexpr int ResetToCloseMs = 1000;

/// Identify is off, the last thing the editor owes the device: the host may close it.
void closeAfterIdentifyOff(QObject *window, QJsonObject)
{
    if (auto *editor = qobject_cast<TarnKBX_MainWindow *>(window))
        QTimer::singleShot(CloseDelayMs, editor, &TarnKBX_MainWindow::request_close);
}

} // namespace

QString TarnKBX_MainWindow::deviceName() const
{
    return m_plugin ? m_plugin->getDeviceName() : QString();
}

void TarnKBX_MainWindow::issue(const QString &path, const QByteArray &bytes, ReplyHandler handler)
{
    // Before the message is queued, so that the handler is in place whenever the answer comes. One that an
    // earlier message of this path left behind, such as that of a Close which was refused, goes.
    if (handler)
        m_setHandlers.insert(path, handler);
    else
        m_setHandlers.remove(path);
    if (m_plugin)
        m_plugin->queueVelmarAsciiMsg(deviceName(), bytes, path::changesStoredSettings(path));
}

void TarnKBX_MainWindow::sendSet(const QString &path, const QJsonValue &value)
{
    issue(path, message::set(path, value), setHandlerFor(path));
}

void TarnKBX_MainWindow::sendSetNumber(const QString &path, int value)
{
    issue(path, message::setNumber(path, value), setHandlerFor(path));
}

void TarnKBX_MainWindow::request_level_msgs()
{
    issue(path::RequestMetering, message::requestMetering(), nullptr);
}

void TarnKBX_MainWindow::on_identify_checkBox_clicked(bool checked)
{
    sendSet(path::Identify, checked);
}

void TarnKBX_MainWindow::on_refresh_pushButton_clicked()
{
    reloadDevice();
}

void TarnKBX_MainWindow::on_close_pushButton_clicked()
{
    ui->identify_checkBox->setChecked(false);
    issue(path::Identify, message::set(path::Identify, false), closeAfterIdentifyOff);
}

bool TarnKBX_MainWindow::confirmOverEditor(const QString &title, const QString &text)
{
    BoxText box;
    box.title = title;
    box.text = text;
    box.buttons = QMessageBox::Ok | QMessageBox::Cancel;
    const AskedDevice asked(this, m_plugin);
    return runModalBox(box, this, this) == QMessageBox::Ok && asked;
}

void TarnKBX_MainWindow::on_factory_reset_pushButton_clicked()
{
    if (!confirmOverEditor(
            QStringLiteral("Device Factory Reset Warning"),
            tr("Continuing with this operation will initiate a factory\nreset of the device.\n\n"
               "Do you wish to proceed?\n")))
        return;
    const QPointer<TarnKBX_MainWindow> alive(this);
    if (m_plugin)
        m_plugin->setSettingsChanged(false);
    if (alive && m_plugin)
        m_plugin->setPluginFlag(false);
    if (!alive)
        return;
    sendSet(path::Defaults, 1);
    ui->plugin_frame->setEnabled(false);
    ui->DSP->hide();
    QTimer::singleShot(ResetToCloseMs, this, &TarnKBX_MainWindow::request_close);
}

void TarnKBX_MainWindow::on_reboot_pushButton_clicked()
{
    if (confirmOverEditor(
            QStringLiteral("Device Reboot Warning"),
            tr("Continuing with this operation will close this plugin and reboot\n the device.\n\n"
               "Do you wish to proceed?\n")))
        reboot_close();
}

void TarnKBX_MainWindow::reboot_close()
{
    issue(path::Reboot, message::reboot(), nullptr);
    QTimer::singleShot(RebootToCloseMs, this, &TarnKBX_MainWindow::on_close_pushButton_clicked);
}

void TarnKBX_MainWindow::request_close()
{
    if (m_plugin)
        emit m_plugin->pluginRequestClose();
}
