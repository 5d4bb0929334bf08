#include "transfer/update_dialog.h"

#include "host/modal_box.h"
#include "host/px_device.h"
#include "transfer/dev_list.h"
#include "transfer/progress_bar_delegate.h"
#include "transfer/tftp_packet.h"
#include "transfer/update_texts.h"
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

} // namespace

UpdateDialog::UpdateDialog(QWidget *parent)
    : QDialog(parent)
    , m_ui(new Ui::UpdateDialog)
    , m_devices(new DevList(this))
{
    m_ui->setupUi(this);
    setWindowFlag(Qt::WindowContextHelpButtonHint, false);
    setUpTable();
    m_ui->close_pushButton->setEnabled(true);
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
        showStatus(updatetexts::portClosed(probe.error(), probe.errorString()), QStyle::SP_MessageBoxWarning);
        return;
    }
    probe.close();
    if (!m_requests.bind(QHostAddress::AnyIPv4, RequestPort,
                         QAbstractSocket::DontShareAddress | QAbstractSocket::ReuseAddressHint))
        showStatus(updatetexts::portClosed(m_requests.error(), m_requests.errorString()),
                   QStyle::SP_MessageBoxWarning);
}

void UpdateDialog::setDevice(pxDevice *device)
{
    if (!device)
        return;
    m_deviceName = device->name();
    m_devices->addDevice(m_deviceName);
}

void UpdateDialog::setFile(const QString &file, const QByteArray &contents)
{
    m_file = file;
    m_data = contents;
    m_ui->img_filename_label->setText(QFileInfo(file).fileName());
    m_ui->img_filename_label->setToolTip(Qt::convertFromPlainText(file));
    m_ui->close_pushButton->setEnabled(true);
    if (contents.isEmpty())
        showStatus(updatetexts::nothingToSend(), QStyle::SP_MessageBoxWarning);
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
    showStatus(updatetexts::sending(peer, m_data.size(), 0));
    m_transfer->setUp();
    m_transfer->startFirmwareUpdates();
    m_ui->close_pushButton->setEnabled(false);
}

void UpdateDialog::handleProgress(int percent)
{
    if (m_ended)
        return;
    m_devices->setProgress(m_deviceName, percent);
    showStatus(updatetexts::sending(m_peer, m_data.size(), percent));
}

void UpdateDialog::handleFinished(bool error)
{
    // A peer that goes on sending makes the transfer end more than once; the user hears of the first.
    if (m_ended)
        return;
    m_ended = true;
    if (error)
        showStatus(updatetexts::failed(m_transfer ? m_transfer->failure() : VmTftp::Failure::NoAnswer),
                   QStyle::SP_MessageBoxWarning);
    else
        showStatus(updatetexts::finished(m_data.size()), QStyle::SP_DialogApplyButton);
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
    constexpr int iconSize = 22;
    m_ui->status_label->setText(text);
    m_ui->status_icon->setPixmap(style()->standardIcon(icon).pixmap(iconSize));
}
