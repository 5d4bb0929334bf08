#include "simulator/tftp_fetcher.h"

#include "simulator/tftp_packet.h"

#include <limits>

namespace sim {

namespace {

constexpr quint16 UnknownTransfer = 5; // error codes of RFC 1350
constexpr quint16 DiskFull = 3;
constexpr quint16 IllegalOperation = 4;

} // namespace

TftpFetcher::TftpFetcher(const Intervals &intervals, const TftpFaultSettings &faults, quint32 seed,
                         QObject *parent)
    : QObject(parent)
    , m_intervals(intervals)
    , m_faults(faults, seed)
{
    m_timer.setSingleShot(true);
    m_timer.setTimerType(Qt::PreciseTimer);
    connect(&m_timer, &QTimer::timeout, this, &TftpFetcher::handleTimeout);
}

void TftpFetcher::fetch(const TftpUri &source, const QHostAddress &local)
{
    abort();
    m_source = source;
    m_file.clear();
    m_block = 0;
    m_repeats = 0;
    m_peer = source.host;
    m_peerPort = source.port;
    m_socket.reset(new QUdpSocket(this));
    connect(m_socket.data(), &QUdpSocket::readyRead, this, &TftpFetcher::readPackets);
    if (!m_socket->bind(local, 0)) {
        fail(QStringLiteral("cannot send from %1: %2").arg(local.toString(), m_socket->errorString()));
        return;
    }
    m_state = State::Requesting;
    send(tftp::readRequestPacket(m_source.file));
    waitForServer();
}

void TftpFetcher::abort()
{
    m_state = State::Idle;
    m_timer.stop();
    m_socket.reset();
}

void TftpFetcher::readPackets()
{
    while (m_state != State::Idle && m_socket->hasPendingDatagrams()) {
        const QNetworkDatagram datagram = m_socket->receiveDatagram();
        for (int copy = m_faults.copies(); copy > 0 && m_state != State::Idle; --copy)
            handle(datagram);
    }
}

void TftpFetcher::handle(const QNetworkDatagram &datagram)
{
    const QByteArray packet = datagram.data();
    if (packet.size() < tftp::HeaderSize)
        return;
    if (!isFromPeer(datagram)) {
        m_socket->writeDatagram(datagram.makeReply(tftp::errorPacket(UnknownTransfer, "unknown transfer")));
        return;
    }
    m_peer = datagram.senderAddress();
    m_peerPort = quint16(datagram.senderPort());
    if (tftp::opcodeOf(packet) == tftp::Data)
        handleData(tftp::numberOf(packet), packet.mid(tftp::HeaderSize));
    else if (tftp::opcodeOf(packet) == tftp::Error && m_state != State::Lingering)
        fail(QStringLiteral("the server refused: error %1, %2")
                 .arg(tftp::numberOf(packet))
                 .arg(QString::fromLatin1(packet.constData() + tftp::HeaderSize)));
}

/// Whoever answers the read request first with its first block or a refusal is the server from then on.
bool TftpFetcher::isFromPeer(const QNetworkDatagram &datagram) const
{
    if (m_state != State::Requesting)
        return datagram.senderPort() == m_peerPort && datagram.senderAddress().isEqual(m_peer);
    const QByteArray packet = datagram.data();
    const quint16 opcode = tftp::opcodeOf(packet);
    return opcode == tftp::Error || (opcode == tftp::Data && tftp::numberOf(packet) == 1);
}

/// A block that comes again is not acknowledged again while others are due: the network may have doubled
/// it, and two acknowledgements would double every packet that follows. The timer repeats a lost one.
void TftpFetcher::handleData(quint16 block, const QByteArray &content)
{
    if (m_state == State::Lingering) {
        if (block == m_block)
            acknowledge();
        return;
    }
    if (block != quint16(m_block + 1))
        return;
    if (content.size() > tftp::BlockSize) {
        send(tftp::errorPacket(IllegalOperation, "block too long"));
        fail(QStringLiteral("a block of %1 bytes").arg(content.size()));
    } else if (m_faults.refuses(block)) {
        send(tftp::errorPacket(0, "NACK"));
        fail(QStringLiteral("refused by the fault option at block %1").arg(block));
    } else {
        m_block = block;
        acceptBlock(content);
    }
}

void TftpFetcher::acceptBlock(const QByteArray &content)
{
    const bool last = content.size() < tftp::BlockSize;
    if (!last && m_block == std::numeric_limits<quint16>::max()) {
        send(tftp::errorPacket(DiskFull, "file too long"));
        fail(QStringLiteral("the file has more than 65535 blocks"));
        return;
    }
    m_file += content;
    m_repeats = 0;
    m_state = last ? State::Lingering : State::Receiving;
    acknowledge();
    waitForServer();
    if (last)
        emit finished(m_file);
}

void TftpFetcher::acknowledge()
{
    for (const QByteArray &packet : m_faults.acknowledge(m_block))
        send(packet);
}

void TftpFetcher::send(const QByteArray &packet)
{
    for (int copy = m_faults.copies(); copy > 0; --copy)
        m_socket->writeDatagram(packet, m_peer, m_peerPort);
}

void TftpFetcher::handleTimeout()
{
    if (m_state == State::Lingering) {
        abort();
        return;
    }
    if (++m_repeats > m_intervals.tftpRepeats) {
        fail(m_state == State::Requesting ? QStringLiteral("the server does not answer")
                                          : QStringLiteral("no block after %1 came").arg(m_block));
        return;
    }
    if (m_state == State::Requesting)
        send(tftp::readRequestPacket(m_source.file));
    else
        acknowledge();
    waitForServer();
}

void TftpFetcher::waitForServer()
{
    int wait = m_intervals.tftpRequest;
    if (m_state == State::Lingering)
        wait = m_intervals.tftpLinger;
    else if (m_state == State::Receiving)
        wait = int(qMin(qint64(m_intervals.tftpAck) << qMin(m_repeats, 20), qint64(m_intervals.tftpAckMost)));
    m_timer.start(wait);
}

void TftpFetcher::fail(const QString &reason)
{
    abort();
    emit failed(reason);
}

} // namespace sim
