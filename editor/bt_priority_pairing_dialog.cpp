#include "editor/bt_priority_pairing_dialog.h"

#include "protocol/messages.h"
#include "protocol/paths.h"

#include "ui_bt_priority_pairing_dialog.h"

#include <QCloseEvent>
#include <QKeyEvent>
#include <QPointer>
#include <QPushButton>

BtPriorityPairingDialog::BtPriorityPairingDialog(const QString &deviceName, QWidget *parent)
    : QDialog(parent)
    , ui(new Ui::BtPriorityPairingDialog)
    , m_deviceName(deviceName)
{
    ui->setupUi(this);
    setWindowFlag(Qt::WindowContextHelpButtonHint, false);
    QPushButton *apply = ui->buttonBox->button(QDialogButtonBox::Ok);
    apply->setText(tr("Apply Changes"));
    apply->setToolTip(tr("Send what is ticked to the device and close this window"));
    QPushButton *discard = ui->buttonBox->button(QDialogButtonBox::Discard);
    discard->setText(tr("Discard Changes"));
    discard->setToolTip(tr("Sends nothing; press Escape to close this window without sending"));
    hide();
    ui->tableWidget->setDeviceName(deviceName);
}

BtPriorityPairingDialog::~BtPriorityPairingDialog() = default;

void BtPriorityPairingDialog::setDeviceName(const QString &name)
{
    if (name == m_deviceName)
        return;
    m_deviceName = name;
    ui->tableWidget->setDeviceName(name);
}

void BtPriorityPairingDialog::showStatus(const QJsonObject &status)
{
    if (status == m_shown)
        return;
    m_shown = status;
    ui->tableWidget->showStatus(status);
}

void BtPriorityPairingDialog::showEvent(QShowEvent *event)
{
    m_shown.reset(); // from now on the user may tick
    QDialog::showEvent(event);
}

void BtPriorityPairingDialog::on_buttonBox_accepted()
{
    const QPointer<BtPriorityPairingDialog> alive(this);
    for (int row = 0; alive && row < ui->tableWidget->rowCount(); ++row) {
        const QString path = path::indexed(path::BluetoothKeep, row);
        emit sendVelmarAsciiSetRequest(m_deviceName, message::set(path, ui->tableWidget->isProtected(row)),
                                       false);
    }
    if (alive)
        hide();
}

void BtPriorityPairingDialog::on_buttonBox_rejected()
{
    hide();
}

void BtPriorityPairingDialog::closeEvent(QCloseEvent *event)
{
    hide();
    event->ignore();
}

void BtPriorityPairingDialog::keyPressEvent(QKeyEvent *event)
{
    if (event->matches(QKeySequence::Close))
        hide();
    else
        QDialog::keyPressEvent(event);
}
