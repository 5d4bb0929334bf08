// A voice cue's way to the device on loopback, block by block, beside the barest sender that keeps the same
// pace. Both ends run in this thread, so that the figures do not depend on how processors are shared.

#include "benchmarks/report.h"
#include "transfer/tftp_packet.h"
#include "transfer/vm_tftp.h"

#include <QEventLoop>
#include <QNetworkDatagram>
#include <QTimer>
#include <QUdpSocket>

namespace bench {

namespace {

constexpr int BlockSize = tftp::DeviceBlockSize;

QHostAddress localHost()
{
    return QHostAddress(QHostAddress::LocalHost);
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

double bareSend(const QByteArray &file)
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
            QTimer::singleShot(1, &socket, send);
    });
    QElapsedTimer timer;
    timer.start();
    send();
    loop.exec();
    return double(timer.nsecsElapsed()) / 1000.0 / block;
}

double ourSend(const QByteArray &file)
{
    Peer peer;
    VmTftp transfer(BlockSize, QStringLiteral("cue.wav"), file, localHost(), peer.localPort(), nullptr);
    QEventLoop loop;
    QObject::connect(&transfer, &VmTftp::finishedUpdates, &loop, &QEventLoop::quit);
    transfer.setUp();
    QElapsedTimer timer;
    timer.start();
    transfer.startFirmwareUpdates();
    loop.exec();
    const int blocks = file.size() / BlockSize + 1;
    return double(timer.nsecsElapsed()) / 1000.0 / blocks;
}

} // namespace

void measureTransfer(Report &report)
{
    struct Size
    {
        int kiB;
        int runs;
    };
    QVector<double> ours;
    for (const Size &size : {Size{16, 9}, Size{160, 5}, Size{1024, 3}, Size{4096, 1}}) {
        const QByteArray file(size.kiB * 1024, 'x');
        QVector<double> ratios;
        QVector<double> figures;
        for (int run = 0; run < size.runs; ++run) {
            const double bare = bareSend(file);
            figures.append(ourSend(file));
            ratios.append(figures.last() / bare);
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

} // namespace bench
