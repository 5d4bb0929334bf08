// Network, notification and metering addresses.

#include "editor/tarnkbx_main_window.h"

#include "dsp/metering_socket.h"
#include "editor/address_checks.h"
#include "editor/asked_device.h"
#include "editor/field_text.h"
#include "editor/guarded_signal_blocker.h"
#include "editor/left_field_check.h"
#include "editor/widgets_in_use.h"
#include "host/modal_box.h"
#include "host/plexo_plugin.h"
#include "protocol/paths.h"
#include "protocol/value_words.h"

#include "ui_main_window.h"

#include <QApplication>
#include <QNetworkDatagram>
#include <QNetworkInterface>
#include <QSignalBlocker>

bool TarnKBX_MainWindow::warnAbout(QLineEdit *field, const QString &problem)
{
    const auto widgets = keepWidgets();
    const QPointer<QLineEdit> alive(field);
    m_leftField->noteTold(field);
    // Neither the field nor what takes the focus from it may report the end of an edit once more. The focus
    // may also be in the window of another device, where the user's next change must not be lost.
    const GuardedSignalBlocker quietField(field);
    QWidget *focus = QApplication::focusWidget();
    const GuardedSignalBlocker quietFocus(isAncestorOf(focus) ? focus : nullptr);
    BoxText box;
    box.title = tr("Invalid entry");
    box.text = problem;
    runModalBox(box, this);
    if (alive)
        alive->setFocus();
    return false;
}

bool TarnKBX_MainWindow::validateIpField(QLineEdit *field)
{
    return isAcceptableAddress(field->text()) || warnAbout(field, tr("Invalid IP address"));
}

bool TarnKBX_MainWindow::validatePortField(QLineEdit *field)
{
    return isAcceptablePort(field->text()) || warnAbout(field, tr("Invalid port number"));
}

/// A failed check only warns. Returns whether the editor is still there, and still that of the same device.
bool TarnKBX_MainWindow::checkField(QLineEdit *field, FieldCheck check)
{
    const AskedDevice asked(this, m_plugin);
    (this->*check)(field);
    if (!asked)
        return false;
    field->setEnabled(true);
    return true;
}

bool TarnKBX_MainWindow::checkAddress(QLineEdit *field)
{
    return checkField(field, &TarnKBX_MainWindow::validateIpField);
}

bool TarnKBX_MainWindow::checkPort(QLineEdit *field)
{
    return checkField(field, &TarnKBX_MainWindow::validatePortField);
}

void TarnKBX_MainWindow::watchFields()
{
    m_leftField = new LeftFieldCheck(this);
    for (QLineEdit *field : {ui->dev_ip_lineEdit, ui->dev_netmask_lineEdit, ui->dev_gateway_lineEdit,
                             ui->multicast_async_notify_ip_lineEdit, ui->multicast_async_notify_port_lineEdit,
                             ui->multicast_metering_ip_lineEdit, ui->multicast_metering_port_lineEdit})
        m_leftField->watch(field);
}

void TarnKBX_MainWindow::finishEdit(QLineEdit *field, FieldCheck check)
{
    m_leftField->check(field, [this, field, check] { checkField(field, check); });
}

void TarnKBX_MainWindow::showNetworkSettings()
{
    const QSignalBlocker quiet(ui->dev_static_ip_checkBox);
    const QJsonObject network = m_caches->object(Section::Network);
    showText(ui->dev_ip_lineEdit, json::text(network, "static_ip"));
    showText(ui->dev_netmask_lineEdit, json::text(network, "static_netmask"));
    showText(ui->dev_gateway_lineEdit, json::text(network, "static_gateway"));
    const bool isStatic = json::text(network, "ip_mode") == words::StaticAddress;
    ui->dev_static_ip_checkBox->setChecked(isStatic);
    on_dev_static_ip_checkBox_clicked(isStatic);
}

void TarnKBX_MainWindow::showNotificationSettings()
{
    const QSignalBlocker quiet(ui->en_multicast_async_notify_checkBox);
    const QJsonObject notifications = m_caches->object(Section::Notifications);
    ui->en_multicast_async_notify_checkBox->setChecked(json::flag(notifications, "enable"));
    showText(ui->multicast_async_notify_ip_lineEdit, json::text(notifications, "ip"));
    showText(ui->multicast_async_notify_port_lineEdit, QString::number(json::number(notifications, "port")));
}

void TarnKBX_MainWindow::showMeteringSettings()
{
    const QJsonObject metering = m_caches->object(Section::Metering);
    // The port is a number, which reads as an empty text: any port in the field counts as different.
    if (json::text(metering, "ip") == ui->multicast_metering_ip_lineEdit->text()
        && json::text(metering, "port") == ui->multicast_metering_port_lineEdit->text())
        return;
    showText(ui->multicast_metering_ip_lineEdit, json::text(metering, "ip"));
    showText(ui->multicast_metering_port_lineEdit, QString::number(json::number(metering, "port")));
    moveMeteringSocket();
}

void TarnKBX_MainWindow::moveMeteringSocket()
{
    const QString group = ui->multicast_metering_ip_lineEdit->text();
    const QString port = ui->multicast_metering_port_lineEdit->text();
    if (m_meteringSocket && (m_meteringSocket->group() != group || m_meteringSocket->port() != port)) {
        m_meteringSocket->leaveGroup();
        m_meteringSocket->disconnect(this);
        m_meteringSocket->close();
        // A level of the old group may be on the stack right now.
        m_meteringSocket->deleteLater();
        m_meteringSocket = nullptr;
    }
    if (m_meteringSocket)
        return;
    const int index = m_plugin ? m_plugin->getNetInterfaceIndex() : 0;
    m_meteringSocket = new MeteringSocket(group, port, QNetworkInterface::interfaceFromIndex(index), this);
    connect(m_meteringSocket, &QUdpSocket::readyRead, this,
            &TarnKBX_MainWindow::readPendingMulticastMetering);
}

void TarnKBX_MainWindow::readPendingMulticastMetering()
{
    if (!m_meteringSocket)
        return;
    const QNetworkDatagram datagram = m_meteringSocket->takeDatagram();
    const pxDevice *device = m_plugin ? m_plugin->getDevice() : nullptr;
    if (device && isLevelDatagram(datagram, device->ipAddress()))
        emit meteringLevels(datagram.data());
}

void TarnKBX_MainWindow::on_dev_static_ip_checkBox_clicked(bool checked)
{
    QWidget *const controls[] = {ui->dev_ip_lineEdit, ui->dev_netmask_lineEdit, ui->dev_gateway_lineEdit,
                                 ui->dev_network_apply_pushButton};
    for (QWidget *control : controls)
        control->setEnabled(checked);
}

void TarnKBX_MainWindow::on_dev_ip_lineEdit_editingFinished()
{
    finishEdit(ui->dev_ip_lineEdit, &TarnKBX_MainWindow::validateIpField);
}

void TarnKBX_MainWindow::on_dev_netmask_lineEdit_editingFinished()
{
    finishEdit(ui->dev_netmask_lineEdit, &TarnKBX_MainWindow::validateIpField);
}

void TarnKBX_MainWindow::on_dev_gateway_lineEdit_editingFinished()
{
    finishEdit(ui->dev_gateway_lineEdit, &TarnKBX_MainWindow::validateIpField);
}

void TarnKBX_MainWindow::on_dev_network_apply_pushButton_clicked()
{
    if (!checkAddress(ui->dev_ip_lineEdit) || !checkAddress(ui->dev_netmask_lineEdit)
        || !checkAddress(ui->dev_gateway_lineEdit))
        return;
    sendSet(setting::Network,
            QJsonObject{
                {QStringLiteral("ip_mode"),
                 ui->dev_static_ip_checkBox->isChecked() ? words::StaticAddress : words::DynamicAddress},
                {QStringLiteral("static_ip"), ui->dev_ip_lineEdit->text()},
                {QStringLiteral("static_gateway"), ui->dev_gateway_lineEdit->text()},
                {QStringLiteral("static_netmask"), ui->dev_netmask_lineEdit->text()},
            });
}

void TarnKBX_MainWindow::on_multicast_async_notify_ip_lineEdit_editingFinished()
{
    finishEdit(ui->multicast_async_notify_ip_lineEdit, &TarnKBX_MainWindow::validateIpField);
}

void TarnKBX_MainWindow::on_multicast_async_notify_port_lineEdit_editingFinished()
{
    finishEdit(ui->multicast_async_notify_port_lineEdit, &TarnKBX_MainWindow::validatePortField);
}

void TarnKBX_MainWindow::on_multicast_async_notify_apply_pushButton_clicked()
{
    if (!checkAddress(ui->multicast_async_notify_ip_lineEdit)
        || !checkPort(ui->multicast_async_notify_port_lineEdit))
        return;
    sendSet(setting::Notifications,
            QJsonObject{
                {QStringLiteral("enable"), ui->en_multicast_async_notify_checkBox->isChecked()},
                {QStringLiteral("ip"), ui->multicast_async_notify_ip_lineEdit->text()},
                {QStringLiteral("port"), ui->multicast_async_notify_port_lineEdit->text().toInt()},
            });
}

void TarnKBX_MainWindow::on_multicast_metering_ip_lineEdit_editingFinished()
{
    finishEdit(ui->multicast_metering_ip_lineEdit, &TarnKBX_MainWindow::validateIpField);
}

void TarnKBX_MainWindow::on_multicast_metering_port_lineEdit_editingFinished()
{
    finishEdit(ui->multicast_metering_port_lineEdit, &TarnKBX_MainWindow::validatePortField);
}

void TarnKBX_MainWindow::on_multicast_metering_apply_pushButton_clicked()
{
    if (!checkAddress(ui->multicast_metering_ip_lineEdit) || !checkPort(ui->multicast_metering_port_lineEdit))
        return;
    sendSet(setting::Metering,
            QJsonObject{
                {QStringLiteral("ip"), ui->multicast_metering_ip_lineEdit->text()},
                {QStringLiteral("port"), ui->multicast_metering_port_lineEdit->text().toInt()},
            });
}
