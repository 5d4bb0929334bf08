#include "benchmarks/foreign_server.h"

#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QUdpSocket>
#include <QtEndian>

#include <ctime>
#include <limits>

namespace bench {

namespace {

constexpr int TimeLimitMs = 5000;
constexpr quint16 Data = 3; // RFC 1350
constexpr quint16 OptionsAccepted = 6; // RFC 2347

QString program()
{
    const QString name = QStringLiteral("in.tftpd");
    const QString found = QStandardPaths::findExecutable(name);
    return found.isEmpty() ? QStandardPaths::findExecutable(name, {QStringLiteral("/usr/sbin")}) : found;
}

quint16 freePort()
{
    QUdpSocket socket;
    socket.bind(QHostAddress(QHostAddress::LocalHost), 0);
    return socket.localPort();
}

QByteArray contentsOf(const QString &name)
{
    QFile file(name);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

quint16 field(const QByteArray &packet, int at)
{
    return packet.size() < at + 2 ? quint16(0) : qFromBigEndian<quint16>(packet.constData() + at);
}

/// Readable for the server, which gives up every right of its own.
bool store(const QTemporaryDir &folder, const QByteArray &contents)
{
    QFile file(folder.filePath(QStringLiteral("cue.wav")));
    return file.open(QIODevice::WriteOnly) && file.write(contents) == contents.size()
        && file.setPermissions(file.permissions() | QFileDevice::ReadOther)
        && QFile::setPermissions(folder.path(),
                                 QFile::permissions(folder.path()) | QFileDevice::ReadOther
                                     | QFileDevice::ExeOther);
}

/// The first packet of the answer; the server may still be starting, so the request is repeated.
QNetworkDatagram ask(QUdpSocket &client, quint16 port, int blockSize)
{
    const QByteArray request
        = QByteArray("\0\1cue.wav\0octet\0blksize\0", 24) + QByteArray::number(blockSize) + '\0';
    QElapsedTimer waited;
    waited.start();
    do
        client.writeDatagram(request, QHostAddress(QHostAddress::LocalHost), port);
    while (!client.waitForReadyRead(50) && !waited.hasExpired(TimeLimitMs));
    return client.receiveDatagram();
}

} // namespace

bool isForeignServerInstalled()
{
    return !program().isEmpty();
}

bool receiveFile(QUdpSocket &client, QNetworkDatagram packet, int blockSize,
                 const std::function<void()> &beforeTheLast)
{
    for (;;) {
        const bool isBlock = field(packet.data(), 0) == Data;
        QByteArray acknowledgement("\0\4\0\0", 4);
        qToBigEndian<quint16>(isBlock ? field(packet.data(), 2) : quint16(0), acknowledgement.data() + 2);
        const bool isLast = isBlock && packet.data().size() < blockSize + 4;
        if (isLast)
            beforeTheLast();
        client.writeDatagram(acknowledgement, packet.senderAddress(), quint16(packet.senderPort()));
        if (isLast)
            return true;
        if (!client.hasPendingDatagrams() && !client.waitForReadyRead(TimeLimitMs))
            return false;
        packet = client.receiveDatagram();
    }
}

double foreignTransfer(const QByteArray &file, int blockSize)
{
    const QTemporaryDir folder;
    const quint16 port = freePort();
    QProcess server;
    if (store(folder, file))
        server.start(program(),
                     {QStringLiteral("-L"), QStringLiteral("-u"), QStringLiteral("root"),
                      QStringLiteral("-a"), QStringLiteral("127.0.0.1:%1").arg(port), QStringLiteral("-s"),
                      folder.path()});
    QUdpSocket client;
    client.bind(QHostAddress(QHostAddress::LocalHost), 0);
    const QNetworkDatagram first = ask(client, port, blockSize);
    const QByteArray sender = contentsOf(QStringLiteral("/proc/%1/task/%1/children").arg(server.processId()));
    const auto spent = [&sender] {
        const QByteArray ns = contentsOf(QStringLiteral("/proc/%1/schedstat").arg(sender.trimmed().toInt()));
        return double(std::clock()) * 1e6 / CLOCKS_PER_SEC + ns.split(' ').value(0).toDouble() / 1000;
    };
    const double before = spent();
    double after = std::numeric_limits<double>::quiet_NaN();
    // The sender is gone as soon as its last block is acknowledged.
    if (field(first.data(), 0) == OptionsAccepted)
        receiveFile(client, first, blockSize, [&] { after = spent(); });
    server.terminate();
    server.waitForFinished();
    return after - before;
}

} // namespace bench
