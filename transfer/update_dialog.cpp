#include "transfer/update_dialog.h"

#include "host/modal_box.h"
#include "host/px_device.h"
#include "transfer/dev_list.h"
#include "transfer/progress_bar_delegate.h"
#include "transfer/tftp_packet.h"
#include "transfer/tick_delegate.h"
#include "transfer/update_texts.h"
#include "transfer/wav_format.h"
#include "ui_update_dialog.h"

#include <QFileInfo>
#include <QNetworkDatagram>
#include <QTextDocument>

namespace {

constexpr quint16 RequestPort = 69;
constexpr int IconColumnWidth = 25;
constexpr int NameColumnWidth = 250;

void discardPending(QUdpSocket &socket)
{
    while (socket.hasPendingDatagrams())
        socket.readDatagram(nullptr, 0);
}

void setIcon(QLabel *label, QStyle::StandardPixmap icon)
{
    constexpr int size = 22;
    label->setPixmap(label->style()->standardIcon(icon).pixmap(size));
}

} // namespace

UpdateDialog::UpdateDialog(QWidget *parent)
    : QDialog(parent)
    , m_ui(new Ui::UpdateDialog)
    , m_devices(new DevList(this))
    , m_tick(new TickDelegate(this))
{
    m_ui->setupUi(this);
    setWindowFlag(Qt::WindowContextHelpButtonHint, false);
    setUpTable();
    m_ui->notice_widget->hide();
    m_ui->close_pushButton->setEnabled(true);
    m_ui->close_pushButton->setFocus();
    showStatus(updatetexts::waiting());
    m_startTimer.setTimerType(Qt::PreciseTimer);
    connect(&m_startTimer, &QTimer::timeout, this, &UpdateDialog::handleStartTimeout);
    listenForRequests();
}

UpdateDialog::~UpdateDialog()
{
    m_startTimer.stop();
    delete m_transfer;
    m_requests.disconnect(this);
}

void UpdateDialog::setUpTable()
{
    m_ui->tableView->setModel(m_devices);
    m_ui->tableView->setItemDelegateForColumn(DevList::ProgressColumn, new ProgressBarDelegate(this));
    m_ui->tableView->setItemDelegateForColumn(DevList::IconColumn, m_tick);
    m_ui->tableView->setColumnWidth(DevList::IconColumn, IconColumnWidth);
    m_ui->tableView->setColumnWidth(DevList::NameColumn, NameColumnWidth);
}

/// Sharing the port is asked for below so that it can be opened again at once after a transfer. On some
/// systems that also lets two dialogs open it, of which only one hears the devices; an exclusive bind
/// beforehand tells.
void UpdateDialog::listenForRequests()
{
    connect(&m_requests, &QUdpSocket::readyRead, this, &UpdateDialog::handleTftpGet);
    QUdpSocket probe;
    if (!probe.bind(QHostAddress::AnyIPv4, RequestPort, QAbstractSocket::DontShareAddress)) {
        warn(updatetexts::portClosed(probe.error(), probe.errorString()));
        return;
    }
    probe.close();
    if (!m_requests.bind(QHostAddress::AnyIPv4, RequestPort,
                         QAbstractSocket::DontShareAddress | QAbstractSocket::ReuseAddressHint))
        warn(updatetexts::portClosed(m_requests.error(), m_requests.errorString()));
}

void UpdateDialog::setDevice(pxDevice *device)
{
    if (!device)
        return;
    m_deviceName = device->name();
    m_deviceAddress = device->ipAddress();
    m_devices->addDevice(m_deviceName);
}

void UpdateDialog::setFile(const QString &file, const QByteArray &contents)
{
    m_file = file;
    m_data = contents;
    m_ui->img_filename_label->setText(QFileInfo(file).fileName());
    m_ui->img_filename_label->setToolTip(Qt::convertFromPlainText(file));
    m_ui->close_pushButton->setEnabled(true);
    m_unplayableKind = unplayableKind(contents);
    if (contents.isEmpty())
        warn(updatetexts::nothingToSend());
    else if (!m_unplayableKind.isEmpty())
        addNotice(updatetexts::unplayable(m_unplayableKind));
    m_startTimer.start(m_intervals.start);
}

void UpdateDialog::handleTftpGet()
{
    const QNetworkDatagram datagram = m_requests.receiveDatagram();
    if (!m_transfer && tftp::opcode(datagram.data()) == tftp::ReadRequest) {
        // The message runs an event loop of its own, in which this dialog may be destroyed; that must not
        // happen under the socket's own signal.
        if (m_data.isEmpty())
            QMetaObject::invokeMethod(this, &UpdateDialog::handleTimeout, Qt::QueuedConnection);
        else
            serve(datagram.senderAddress(), quint16(datagram.senderPort()));
    }
    discardPending(m_requests);
}

void UpdateDialog::serve(const QHostAddress &peer, quint16 port)
{
    m_startTimer.stop();
    m_peer = peer;
    m_transfer = new VmTftp(tftp::DeviceBlockSize, m_file, m_data, peer, port, this);
    m_transfer->setIntervals(m_intervals.transfer);
    connect(m_transfer, &VmTftp::progress, this, &UpdateDialog::handleProgress, Qt::QueuedConnection);
    connect(m_transfer, &VmTftp::finishedUpdates, this, &UpdateDialog::handleFinished, Qt::QueuedConnection);
    connect(this, &UpdateDialog::signalTftpDone, m_transfer, &VmTftp::handleDone, Qt::QueuedConnection);
    if (isStranger())
        addNotice(updatetexts::stranger(peer, m_deviceName, m_deviceAddress));
    showStatus(updatetexts::sending(peer, m_data.size(), 0));
    m_transfer->setUp();
    m_transfer->startFirmwareUpdates();
    setFocus(); // else it would jump into a text
    m_ui->close_pushButton->setEnabled(false);
}

void UpdateDialog::handleProgress(int percent)
{
    if (m_ended)
        return;
    m_devices->setProgress(m_deviceName, percent);
    m_ui->status_label->setText(updatetexts::sending(m_peer, m_data.size(), percent));
}

bool UpdateDialog::isStranger() const
{
    return !m_deviceAddress.isNull() && !m_peer.isEqual(m_deviceAddress, QHostAddress::TolerantConversion);
}

void UpdateDialog::handleFinished(bool error)
{
    // A peer that goes on sending makes the transfer end more than once; the user hears of the first.
    if (m_ended)
        return;
    m_ended = true;
    if (error) {
        warn(updatetexts::failed(m_transfer ? m_transfer->failure() : VmTftp::Failure::NoAnswer));
    } else if (isStranger()) {
        warn(updatetexts::finishedWithStranger(m_peer));
    } else if (!m_unplayableKind.isEmpty()) {
        warn(updatetexts::finishedUnplayable(m_data.size()));
    } else {
        m_tick->setDue();
        showStatus(updatetexts::finished(m_data.size()), QStyle::SP_DialogApplyButton);
    }
    releaseTransfer();
}

void UpdateDialog::handleStartTimeout()
{
    m_startTimer.stop();
    if (!m_transfer && !m_data.isEmpty() && m_requests.state() == QAbstractSocket::BoundState)
        showStatus(updatetexts::notAskedYet());
    releaseTransfer();
}

/// The user may leave: whoever listens is told that the dialog waits for nothing more.
void UpdateDialog::releaseTransfer()
{
    m_ui->close_pushButton->setEnabled(true);
    m_ui->close_pushButton->setFocus();
    on_update();
    if (m_transfer)
        disconnect(this, &UpdateDialog::signalTftpDone, m_transfer, &VmTftp::handleDone);
    emit signalTftpDone();
}

void UpdateDialog::handleTimeout()
{
    BoxText text;
    text.title = tr("Failed to update the image");
    text.text = tr("There was a failure in updating the voice cue wav file.");
    if (runModalBox(text, this, this) == QMessageBox::Ok)
        on_close_pushButton_clicked();
}

void UpdateDialog::on_update()
{
    m_ui->tableView->viewport()->update();
}

void UpdateDialog::on_close_pushButton_clicked()
{
    if (m_ui->close_pushButton->isEnabled())
        done(QDialog::Rejected);
}

void UpdateDialog::showStatus(const QString &text, QStyle::StandardPixmap icon)
{
    m_ui->status_label->setText(text);
    setIcon(m_ui->status_icon, icon);
    announce();
}

/// What stays true, and on show, until the dialog closes.
void UpdateDialog::addNotice(const QString &text)
{
    const QString before = m_ui->notice_label->text();
    m_ui->notice_label->setText(before.isEmpty() ? text : before + QLatin1Char('\n') + text);
    setIcon(m_ui->notice_icon, QStyle::SP_MessageBoxWarning);
    m_ui->notice_widget->show();
    announce();
}

/// Screen readers say at once when the description of what has the focus changes: that is Close, or this
/// dialog while Close is disabled. Each per cent would be too much.
void UpdateDialog::announce()
{
    const QString text
        = (m_ui->notice_label->text() + QLatin1Char('\n') + m_ui->status_label->text()).trimmed();
    setAccessibleDescription(text);
    m_ui->close_pushButton->setAccessibleDescription(text);
}
