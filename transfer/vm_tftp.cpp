#include "transfer/vm_tftp.h"

#include "transfer/tftp_packet.h"

#include <QElapsedTimer>

VmTftp::VmTftp(int blockSize, const QString &fileName, const QByteArray &data, const QHostAddress &peer,
               quint16 port, QObject *parent)
    : QObject(parent)
    , m_blockSize(blockSize)
    , m_peer(peer)
    , m_port(port)
    , m_fileName(fileName)
    , m_data(data)
{
    // Lets spies and queued receivers carry the arguments of ackEvent().
    qRegisterMetaType<uint16_t>("uint16_t");
}

VmTftp::~VmTftp()
{
    m_socket.disconnect(this); // closing it must reach no slot of a half-destroyed object
}

void VmTftp::setUp()
{
    if (!m_socket.bind(QHostAddress::AnyIPv4, 0,
                       QAbstractSocket::DontShareAddress | QAbstractSocket::ReuseAddressHint))
        emit logData(QStringLiteral("TFTP cannot open a port: %1").arg(m_socket.errorString()));
    connect(&m_socket, &QUdpSocket::connected, this, &VmTftp::handleSocketConnected);
    connect(this, &VmTftp::DeviceResponse, this, &VmTftp::handleDataGram);
    connect(this, &VmTftp::ackEvent, this, &VmTftp::processAck);
    connect(&m_timeout, &QTimer::timeout, this, &VmTftp::handleTftpTimeout);
    m_timeout.setTimerType(Qt::PreciseTimer);
    m_timeout.setInterval(m_intervals.packetTimeout);
}

void VmTftp::sendFileName()
{
    begin(AskToWrite);
}

void VmTftp::startFirmwareUpdates()
{
    begin(AnswerRead);
}

void VmTftp::begin(State state)
{
    m_failure = Failure::None;
    m_cancel = false;
    m_endPending = false;
    m_retries = 0;
    m_offset = 0;
    m_state = state;
    processFirmwareUpdates();
}

void VmTftp::cancelFirmwareUpdates()
{
    m_cancel = true;
}

void VmTftp::handleDone()
{
    m_timeout.stop();
    end(Failure::None);
}

void VmTftp::runLater()
{
    QTimer::singleShot(m_intervals.step, this, &VmTftp::processFirmwareUpdates);
}

void VmTftp::end(Failure failure)
{
    m_failure = failure;
    m_state = Done;
    m_endPending = true;
    runLater();
}

void VmTftp::processFirmwareUpdates()
{
    switch (m_state) {
    case Done:
        reportEnd();
        break;
    case AskToWrite:
        askToWrite();
        break;
    case AnswerRead:
        answerRead();
        break;
    case FullBlock:
        sendBlock(QStringLiteral("Sending packet: sequence %1 of %2"));
        break;
    case LastBlock:
        sendBlock(QStringLiteral("Sending last packet: sequence %1 of %2"));
        break;
    }
}

void VmTftp::reportEnd()
{
    m_endPending = false;
    emit logData(QStringLiteral("TFTP Done: error(%1)").arg(int(failed())));
    m_timeout.stop();
    emit finishedUpdates(failed());
}

void VmTftp::askToWrite()
{
    if (m_cancel) {
        end(Failure::None);
        return;
    }
    if (!prepare(0))
        return;
    if (!send(tftp::writeRequest(m_fileName, m_blockSize)))
        return;
    emit logData(QStringLiteral("TFTP send file: %1").arg(m_fileName));
    m_timeout.start();
}

void VmTftp::answerRead()
{
    if (m_cancel) {
        emit logData(QStringLiteral("TFTP canceled..."));
        end(Failure::None);
        return;
    }
    if (!prepare(1))
        return;
    // A first block that is already short is the last one: the peer does not acknowledge anything after it.
    m_state = stateForRemaining();
    runLater();
    m_timeout.start();
}

/// False when the transfer has ended because the blocks of the file cannot be numbered.
bool VmTftp::prepare(quint16 firstSequence)
{
    m_sequence = firstSequence;
    m_retries = 0;
    if (!tftp::fits(m_data.size(), m_blockSize)) {
        emit logData(QStringLiteral("TFTP file too long: %1 bytes need more than %2 blocks of %3")
                         .arg(m_data.size())
                         .arg(tftp::MaxBlocks)
                         .arg(m_blockSize));
        end(Failure::TooLong);
        return false;
    }
    m_totalBlocks = quint16(m_data.size() / m_blockSize + (m_data.size() % m_blockSize != 0));
    connectToPeer();
    return true;
}

/// UDP has no handshake, so the socket is normally connected before the first look. The transfer goes on in
/// either case; without a connection its first packet fails.
void VmTftp::connectToPeer()
{
    if (m_connected)
        return;
    m_socket.connectToHost(m_peer, m_port, QIODevice::ReadWrite);
    QElapsedTimer waited;
    waited.start();
    const auto connecting = [this] {
        return m_socket.state() == QAbstractSocket::HostLookupState
            || m_socket.state() == QAbstractSocket::ConnectingState;
    };
    while (!m_connected && connecting() && !waited.hasExpired(m_intervals.connectWait.count()))
        m_socket.waitForConnected(int(m_intervals.connectPoll.count()));
}

void VmTftp::handleSocketConnected()
{
    while (m_socket.hasPendingDatagrams())
        m_socket.readDatagram(nullptr, 0);
    connect(&m_socket, &QUdpSocket::readyRead, this, &VmTftp::readPendingDataGram, Qt::UniqueConnection);
    m_connected = true;
}

void VmTftp::sendBlock(const QString &logLine)
{
    if (!send(tftp::dataPacket(m_sequence, m_data.mid(m_offset, m_blockSize))))
        return;
    emit logData(logLine.arg(m_sequence).arg(m_totalBlocks));
    m_timeout.start();
}

/// False when the transfer has ended because the packet could not be handed to the system.
bool VmTftp::send(const QByteArray &packet)
{
    if (m_socket.isOpen() && m_socket.write(packet) == packet.size())
        return true;
    end(Failure::NotSent);
    return false;
}

void VmTftp::readPendingDataGram()
{
    // A pending socket error also arrives here, without a datagram. It must be read all the same: a socket
    // that was reported as readable and is not read does not report again.
    QHostAddress sender;
    QByteArray bytes(int(qMax<qint64>(m_socket.pendingDatagramSize(), 0)), Qt::Uninitialized);
    const qint64 size = m_socket.readDatagram(bytes.data(), bytes.size(), &sender);
    if (size < tftp::HeaderSize)
        return;
    bytes.truncate(int(size));
    emit DeviceResponse(sender, bytes);
}

void VmTftp::handleDataGram(QHostAddress &addr, QByteArray bytes)
{
    bool senderIsIPv4 = false;
    bool peerIsIPv4 = false;
    const bool same = addr.toIPv4Address(&senderIsIPv4) == m_peer.toIPv4Address(&peerIsIPv4);
    if (!same || !senderIsIPv4 || !peerIsIPv4 || bytes.size() < tftp::HeaderSize)
        return;
    if (tftp::isRefusal(bytes))
        end(Failure::Refused);
    else
        emit ackEvent(tftp::opcode(bytes), tftp::blockNumber(bytes));
}

void VmTftp::processAck(uint16_t ack, uint16_t seq)
{
    m_timeout.stop();
    // A network may double the acknowledgement of the last block; it must not revive a finished transfer
    // before its success is reported.
    if (m_endPending)
        return;
    if (m_retries > MaxRetries) {
        emit logData(QStringLiteral("Retries exceeded for transfer..."));
        end(Failure::NoAnswer);
        return;
    }
    emit logData(QStringLiteral("TFTP handle ACK (%1) - sequence: (%2) - Expected sequence: (%3)")
                     .arg(ack)
                     .arg(seq)
                     .arg(m_sequence));
    if (ack == tftp::Acknowledgement && seq == m_sequence)
        acceptAcknowledgement();
    else
        ++m_retries;
    runLater();
}

void VmTftp::acceptAcknowledgement()
{
    m_retries = 0;
    if (m_state == LastBlock) {
        m_state = Done;
        m_failure = Failure::None;
        m_endPending = true;
        return;
    }
    if (m_sequence != 0) // which is a write request's
        m_offset += qMin(m_blockSize, remaining());
    const int reached = percent();
    ++m_sequence;
    m_state = stateForRemaining();
    emit progress(reached);
}

/// The last block is a short one, if need be an empty one.
VmTftp::State VmTftp::stateForRemaining() const
{
    return remaining() < m_blockSize ? LastBlock : FullBlock;
}

/// Single precision throughout, truncated: the last full block of some files reports 99, not 100.
int VmTftp::percent() const
{
    if (m_totalBlocks == 0)
        return 0;
    const float perBlock = 100.0F / float(m_totalBlocks);
    return int(perBlock * float(m_sequence));
}

void VmTftp::handleTftpTimeout()
{
    m_timeout.stop();
    ++m_retries;
    const bool exceeded = m_retries > MaxRetries;
    emit logData(QStringLiteral("TFTP timeout: for sequence (%1) retrying %2 of %3")
                     .arg(m_sequence)
                     .arg(m_retries)
                     .arg(MaxRetries));
    if (exceeded)
        end(Failure::NoAnswer);
    else
        runLater();
}
