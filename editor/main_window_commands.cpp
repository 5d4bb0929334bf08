// How a command is issued, and the commands of the device panel.

#include "editor/tarnkbx_main_window.h"

#include "editor/asked_device.h"
#include "editor/widgets_in_use.h"
#include "host/modal_box.h"
#include "host/plexo_plugin.h"
#include "protocol/messages.h"
#include "protocol/paths.h"

#include "ui_main_window.h"

QString TarnKBX_MainWindow::deviceName() const
{
    return m_plugin ? m_plugin->getDeviceName() : QString();
}

void TarnKBX_MainWindow::issue(const QString &path, const QByteArray &bytes, const ReplyHandler &handler)
{
    const auto widgets = keepWidgets();
    // Before the message is queued, so that the handler is in place whenever the answer comes. One that an
    // earlier message of this path left behind, such as that of a Close which was refused, goes.
    if (handler)
        m_setHandlers.insert(path, handler);
    else
        m_setHandlers.remove(path);
    if (m_plugin)
        m_plugin->queueVelmarAsciiMsg(deviceName(), bytes, path::changesStoredSettings(path));
}

void TarnKBX_MainWindow::sendSet(const Setting &setting, const QJsonValue &value)
{
    issue(setting.path(), setting.message(value), setting.confirmation());
}

void TarnKBX_MainWindow::sendCommand(const QString &path, const QJsonValue &value)
{
    issue(path, message::set(path, value), nullptr);
}

void TarnKBX_MainWindow::request_level_msgs()
{
    issue(path::RequestMetering, message::requestMetering(), nullptr);
}

void TarnKBX_MainWindow::on_close_pushButton_clicked()
{
    ui->identify_checkBox->setChecked(false);
    // The last thing that the editor owes the device: once it is confirmed, the host may close it.
    issue(path::Identify, message::set(path::Identify, false),
          [this](DeviceStateOwner &, const QJsonObject &) { m_closeTimer.start(); });
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
            tr("Device Factory Reset Warning"),
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
    sendCommand(path::Defaults, 1);
    ui->plugin_frame->setEnabled(false);
    ui->DSP->hide();
    m_resetTimer.start();
}

void TarnKBX_MainWindow::on_reboot_pushButton_clicked()
{
    if (confirmOverEditor(
            tr("Device Reboot Warning"),
            tr("Continuing with this operation will close this plugin and reboot\n the device.\n\n"
               "Do you wish to proceed?\n")))
        reboot_close();
}

void TarnKBX_MainWindow::reboot_close()
{
    issue(path::Reboot, message::reboot(), nullptr);
    m_rebootTimer.start();
}

void TarnKBX_MainWindow::request_close()
{
    if (m_plugin)
        emit m_plugin->pluginRequestClose();
}
