// A voice cue's way to the device on loopback, block by block, beside the barest sender that keeps the same
// pace. Both ends run in this thread, so that the figures do not depend on how processors are shared.

#include "benchmarks/foreign_server.h"
#include "benchmarks/report.h"
#include "transfer/tftp_packet.h"
#include "transfer/vm_tftp.h"

#include <QEventLoop>
#include <QNetworkDatagram>
#include <QTimer>
#include <QUdpSocket>

#include <future>
#include <thread>

namespace bench {

namespace {

using std::chrono::milliseconds;

constexpr int BlockSize = tftp::DeviceBlockSize;

QHostAddress localHost()
{
    return QHostAddress(QHostAddress::LocalHost);
}

int blocksOf(const QByteArray &file)
{
    return file.size() / BlockSize + 1;
}

QByteArray acknowledgementOf(const QByteArray &block)
{
    QByteArray bytes = block.left(tftp::HeaderSize);
    bytes[1] = char(tftp::Acknowledgement);
    return bytes;
}

/// The device's end: acknowledges every block.
class Peer : public QUdpSocket
{
public:
    Peer()
    {
        bind(localHost(), 0);
        connect(this, &QUdpSocket::readyRead, this, [this] {
            while (hasPendingDatagrams()) {
                const QNetworkDatagram block = receiveDatagram();
                writeDatagram(acknowledgementOf(block.data()), block.senderAddress(),
                              quint16(block.senderPort()));
            }
        });
    }
};

void bareSend(const QByteArray &file, milliseconds step)
{
    Peer peer;
    QUdpSocket socket;
    socket.bind(localHost(), 0);
    QEventLoop loop;
    int block = 0;
    const auto send = [&] {
        const int offset = block * BlockSize;
        ++block;
        socket.writeDatagram(tftp::dataPacket(quint16(block), file.mid(offset, BlockSize)), localHost(),
                             peer.localPort());
    };
    QObject::connect(&socket, &QUdpSocket::readyRead, [&] {
        socket.receiveDatagram();
        if (block * BlockSize > file.size())
            loop.quit();
        else
            QTimer::singleShot(step, &socket, send);
    });
    send();
    loop.exec();
}

void sendTo(quint16 port, const QByteArray &file, milliseconds step)
{
    VmTftp transfer(BlockSize, QStringLiteral("cue.wav"), file, localHost(), port, nullptr);
    VmTftp::Intervals intervals;
    intervals.step = step;
    transfer.setIntervals(intervals);
    QEventLoop loop;
    QObject::connect(&transfer, &VmTftp::finishedUpdates, &loop, &QEventLoop::quit);
    transfer.setUp();
    transfer.startFirmwareUpdates();
    loop.exec();
}

void ourSend(const QByteArray &file, milliseconds step)
{
    const Peer peer;
    sendTo(peer.localPort(), file, step);
}

/// Microseconds that @p send takes, waiting included.
template <typename Send>
double wallTime(Send send)
{
    QElapsedTimer timer;
    timer.start();
    send();
    return double(timer.nsecsElapsed()) / 1000.0;
}

void measurePaced(Report &report)
{
    struct Size
    {
        int kiB;
        int runs;
    };
    constexpr milliseconds step = VmTftp::Intervals().step;
    QVector<double> ours;
    for (const Size &size : {Size{16, 9}, Size{160, 5}, Size{1024, 3}, Size{4096, 1}}) {
        const QByteArray file(size.kiB * 1024, 'x');
        QVector<double> ratios;
        QVector<double> figures;
        for (int run = 0; run < size.runs; ++run) {
            const double bare = wallTime([&] { bareSend(file, step); });
            const double sent = wallTime([&] { ourSend(file, step); });
            figures.append(sent / blocksOf(file));
            ratios.append(sent / bare);
        }
        ours.append(median(figures));
        report.add(QStringLiteral("sending a file of %1 KiB, a block").arg(size.kiB), ours.last(),
                   QStringLiteral("us"));
        report.addAtMost(QStringLiteral("  to a bare sender with the same steps"), median(ratios),
                         QStringLiteral("x"), 1.05);
    }
    report.addAtMost(QStringLiteral("a block of 4096 KiB to one of 16 KiB"), ours.last() / ours.first(),
                     QStringLiteral("x"), 1.1);
}

/// What the waiting step hides: both ends' processor time, system included.
void measureUnpaced(Report &report, const QByteArray &file)
{
    constexpr int Runs = 15;
    QVector<double> figures;
    QVector<double> ratios;
    for (int run = 0; run < Runs; ++run) {
        const double bare = medianMicroseconds(1, [&] { bareSend(file, milliseconds(0)); });
        const double sent = medianMicroseconds(1, [&] { ourSend(file, milliseconds(0)); });
        figures.append(sent / blocksOf(file));
        ratios.append(sent / bare);
    }
    report.add(QStringLiteral("a block without the waiting step, both ends' processor time"), median(figures),
               QStringLiteral("us"));
    report.addAtMost(QStringLiteral("  to a bare sender"), median(ratios), QStringLiteral("x"), 2);
}

/// To a receiver in a thread of its own, as the other server's sender has a process of its own.
void threadedTransfer(const QByteArray &file)
{
    std::promise<quint16> port;
    std::thread device([&port] {
        QUdpSocket client;
        client.bind(localHost(), 0);
        port.set_value(client.localPort());
        if (client.waitForReadyRead(-1))
            receiveFile(client, client.receiveDatagram(), BlockSize);
    });
    const quint16 target = port.get_future().get();
    sendTo(target, file, milliseconds(0));
    device.join();
}

/// No goal: the turns of the event loop, of which every block takes two, cost more than that server's whole
/// block.
void compareWithForeign(Report &report, const QByteArray &file)
{
    constexpr int Runs = 15;
    if (!isForeignServerInstalled()) {
        report.note(QStringLiteral("tftpd-hpa is not installed, so no block of it stands beside ours"));
        return;
    }
    QVector<double> figures;
    QVector<double> ratios;
    for (int run = 0; run < Runs; ++run) {
        const double foreign = foreignTransfer(file, BlockSize);
        const double ours = medianMicroseconds(1, [&] { threadedTransfer(file); });
        figures.append(ours / blocksOf(file));
        ratios.append(ours / foreign);
    }
    report.add(QStringLiteral("  the same with the receiver in a thread of its own"), median(figures),
               QStringLiteral("us"));
    report.add(QStringLiteral("  to a block of tftpd-hpa and the same receiver"), median(ratios),
               QStringLiteral("x"));
}

} // namespace

void measureTransfer(Report &report)
{
    measurePaced(report);
    const QByteArray file(1024 * 1024, 'x');
    measureUnpaced(report, file);
    compareWithForeign(report, file);
}

} // namespace bench
