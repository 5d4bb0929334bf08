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

void toSender(int fileSize, const QList<QByteArray> &datagrams)
{
    QHostAddress peer(QHostAddress::LocalHost);
    VmTftp sender(tftp::DeviceBlockSize, QStringLiteral("f"), QByteArray(fileSize, 'x'), peer, 9, nullptr);
    VmTftp::Intervals quick;
    quick.step = std::chrono::milliseconds(0);
    sender.setIntervals(quick);
    sender.setUp();
    sender.startFirmwareUpdates();
    for (const QByteArray &datagram : datagrams) {
        QCoreApplication::processEvents();
        sender.handleDataGram(peer, datagram);
    }
    QCoreApplication::processEvents();
}

void toFetcher(const QList<QByteArray> &datagrams)
{
    static QUdpSocket server;
    if (server.state() != QAbstractSocket::BoundState)
        server.bind(QHostAddress(QHostAddress::LocalHost), 0);
    sim::TftpFetcher fetcher(sim::Intervals(), {}, 1);
    QObject::connect(&fetcher, &sim::TftpFetcher::finished,
                     [](const QByteArray &file) { sim::checkWave(file); });
    fetcher.fetch({QHostAddress(QHostAddress::LocalHost), server.localPort(), QStringLiteral("f")},
                  QHostAddress(QHostAddress::LocalHost));
    QHostAddress device;
    quint16 port = 0;
    if (!server.waitForReadyRead(1000) || server.readDatagram(nullptr, 0, &device, &port) < 0)
        return;
    for (const QByteArray &datagram : datagrams) {
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
        sim::checkWave(bytes.mid(1));
        sim::parseTftpUri(QString::fromUtf8(bytes.mid(1)));
    }
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    return 0;
}
