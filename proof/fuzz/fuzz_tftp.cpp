// Datagrams of file transfers: to the sender while it sends, to the simulated device while it fetches, and
// the fetched file to the check of recordings.

#include "proof/fuzz/lines.h"
#include "simulator/tftp_fetcher.h"
#include "simulator/wave_file.h"
#include "transfer/tftp_packet.h"
#include "transfer/vm_tftp.h"

#include <QCoreApplication>

namespace {

constexpr int LargestDatagram = 600;

/// Datagrams one after the other: a byte with the length in units of five bytes, then the content.
QList<QByteArray> datagramsIn(QByteArray bytes)
{
    QList<QByteArray> datagrams;
    while (!bytes.isEmpty()) {
        const int length = qMin(int(uchar(bytes.at(0))) * 5, LargestDatagram);
        datagrams.append(bytes.mid(1, length));
        bytes.remove(0, length + 1);
    }
    return datagrams;
}

/// A sender that is told what @p datagrams say, against what is known of such transfers: it goes on to the
/// next block when the last one was acknowledged by its peer, repeats one at most ten times in a row, and
/// ends once.
class SenderCheck
{
public:
    explicit SenderCheck(int fileSize)
        : m_file(content(fileSize))
        , m_sender(tftp::DeviceBlockSize, QStringLiteral("f"), m_file, m_peer, server().localPort(), nullptr)
    {
        QObject::connect(&m_sender, &VmTftp::progress, [this](int percent) {
            const int blocks = (m_file.size() + tftp::DeviceBlockSize - 1) / tftp::DeviceBlockSize;
            const float perBlock = 100.0F / float(blocks);
            if (percent > 100 || percent != int(perBlock * float(m_block - 1)))
                qFatal("%d %% with %d blocks of %d bytes", percent, m_block - 1, m_file.size());
        });
        QObject::connect(&m_sender, &VmTftp::finishedUpdates, [this] { checkEnd(); });
        VmTftp::Intervals quick;
        quick.step = std::chrono::milliseconds(0);
        m_sender.setIntervals(quick);
        m_sender.setUp();
        m_sender.startFirmwareUpdates();
        settle();
    }

    /// An empty one stands for the time that none comes.
    void take(const QByteArray &datagram, bool fromStranger)
    {
        QHostAddress sender(fromStranger ? QHostAddress(QStringLiteral("127.0.0.2")) : m_peer);
        if (datagram.isEmpty())
            expectTimeout();
        else if (!fromStranger && datagram.size() >= tftp::HeaderSize)
            expect(datagram);
        if (datagram.isEmpty())
            m_sender.handleTftpTimeout();
        else
            m_sender.handleDataGram(sender, datagram);
    }

    /// Its owner then lets go of it.
    bool isFinished() const { return m_finished; }

    void settle()
    {
        QCoreApplication::processEvents();
        while (server().hasPendingDatagrams()) {
            QByteArray packet(LargestDatagram, '\0');
            packet.truncate(int(server().readDatagram(packet.data(), packet.size())));
            checkPacket(packet);
        }
    }

private:
    static QByteArray content(int size)
    {
        QByteArray bytes(size, '\0');
        for (int i = 0; i < size; ++i)
            bytes[i] = char(i * 7 + i / 256);
        return bytes;
    }
    static QUdpSocket &server()
    {
        static QUdpSocket socket;
        if (socket.state() != QAbstractSocket::BoundState)
            socket.bind(QHostAddress(QHostAddress::LocalHost), 0);
        return socket;
    }
    QByteArray block(int number) const
    {
        return m_file.mid((number - 1) * tftp::DeviceBlockSize, tftp::DeviceBlockSize);
    }
    int lastBlock() const { return m_file.size() / tftp::DeviceBlockSize + 1; }

    void expect(const QByteArray &datagram)
    {
        const int number = uchar(datagram.at(2)) * 256 + uchar(datagram.at(3));
        if (m_over)
            return;
        if (datagram.contains("NACK") || m_repeats > VmTftp::MaxRetries)
            m_over = true;
        else if (!datagram.startsWith(QByteArray("\0\4", 2)) || number != m_block)
            ++m_repeats;
        else
            acknowledge();
    }
    void acknowledge()
    {
        m_repeats = 0;
        m_over = m_block == lastBlock();
        m_block += m_over ? 0 : 1;
    }
    void expectTimeout()
    {
        if (!m_over)
            m_over = ++m_repeats > VmTftp::MaxRetries;
    }
    void checkEnd()
    {
        m_finished = true;
        if (!m_over)
            qFatal("a transfer ends at block %d after %d repetitions", m_block, m_repeats);
    }
    void checkPacket(const QByteArray &packet)
    {
        if (packet != tftp::dataPacket(quint16(m_block), block(m_block)) || m_ended)
            qFatal("not block %d but %s", m_block, packet.left(4).toHex().constData());
        m_ended = m_over;
    }

    const QHostAddress m_peer{QHostAddress::LocalHost};
    const QByteArray m_file;
    VmTftp m_sender;
    int m_block = 1; ///< that is due
    int m_repeats = 0; ///< in a row
    bool m_over = false; ///< nothing more is due
    bool m_finished = false;
    bool m_ended = false; ///< and what was on its way has come
};

/// The first bit of a datagram's first byte says whether the sender gets on with it before the next one
/// comes, the second whether it is from somebody else.
void toSender(int fileSize, const QList<QByteArray> &datagrams)
{
    SenderCheck check(fileSize);
    for (const QByteArray &datagram : datagrams) {
        if (check.isFinished())
            return;
        const int how = datagram.isEmpty() ? 1 : uchar(datagram.at(0));
        check.take(datagram.mid(1), how % 4 > 1);
        if (how % 2 == 1)
            check.settle();
    }
    check.settle();
}

/// What a fetcher must make of the datagrams of a server.
class FetchedFile
{
public:
    void take(const QByteArray &datagram)
    {
        const bool isNext = datagram.size() >= tftp::HeaderSize && datagram.startsWith(QByteArray("\0\3", 2))
            && uchar(datagram.at(2)) * 256 + uchar(datagram.at(3)) == m_next;
        if (!isNext || m_complete)
            return;
        ++m_next;
        m_bytes += datagram.mid(tftp::HeaderSize);
        m_complete = datagram.size() - tftp::HeaderSize < tftp::DeviceBlockSize;
    }
    void check(const QByteArray &file) const
    {
        if (!m_complete || file != m_bytes)
            qFatal("%d bytes were fetched instead of %d", file.size(), m_bytes.size());
    }

private:
    QByteArray m_bytes;
    int m_next = 1;
    bool m_complete = false;
};

/// What can be played says so somewhere: PCM, mono, 16 kHz, 16 bits.
void checkRecording(const QByteArray &file)
{
    if (!sim::checkWave(file).problem.isEmpty())
        return;
    for (int at = file.indexOf("fmt "); at >= 0; at = file.indexOf("fmt ", at + 1)) {
        if (file.mid(at + 8, 8) == QByteArray("\1\0\1\0\x80\x3e\0\0", 8)
            && file.mid(at + 22, 2) == QByteArray("\x10\0", 2))
            return;
    }
    qFatal("a recording is taken that cannot be played");
}

void toFetcher(const QList<QByteArray> &datagrams)
{
    static QUdpSocket server;
    if (server.state() != QAbstractSocket::BoundState)
        server.bind(QHostAddress(QHostAddress::LocalHost), 0);
    sim::TftpFetcher fetcher(sim::Intervals(), {}, 1);
    FetchedFile expected;
    QObject::connect(&fetcher, &sim::TftpFetcher::finished, [&expected](const QByteArray &file) {
        expected.check(file);
        checkRecording(file);
    });
    fetcher.fetch({QHostAddress(QHostAddress::LocalHost), server.localPort(), QStringLiteral("f")},
                  QHostAddress(QHostAddress::LocalHost));
    QHostAddress device;
    quint16 port = 0;
    if (!server.waitForReadyRead(1000) || server.readDatagram(nullptr, 0, &device, &port) < 0)
        return;
    for (const QByteArray &datagram : datagrams) {
        expected.take(datagram);
        server.writeDatagram(datagram, device, port);
        QCoreApplication::processEvents();
    }
    while (server.hasPendingDatagrams())
        server.readDatagram(nullptr, 0);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    static int count = 1;
    static char name[] = "fuzz";
    static char *arguments[] = {name, nullptr};
    static auto *application = new QCoreApplication(count, arguments);
    Q_UNUSED(application)
    if (size < 1)
        return 0;
    const QByteArray bytes(reinterpret_cast<const char *>(data), int(size));
    const QList<QByteArray> datagrams = datagramsIn(bytes.mid(1));
    switch (data[0] % 3) {
    case 0:
        toSender(data[0] * 10, datagrams);
        break;
    case 1:
        toFetcher(datagrams);
        break;
    default:
        checkRecording(bytes.mid(1));
        sim::parseTftpUri(QString::fromUtf8(bytes.mid(1)));
    }
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    return 0;
}
