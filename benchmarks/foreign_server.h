#pragma once

#include <QNetworkDatagram>
#include <QUdpSocket>

#include <functional>

namespace bench {

/// Acknowledges @p packet, which is a block of a file or a server's consent, and every block after it until
/// one is short. Blocks the thread. False when the server falls silent.
bool receiveFile(
    QUdpSocket &client, QNetworkDatagram packet, int blockSize,
    const std::function<void()> &beforeTheLast = [] {});

/// Debian's tftpd-hpa, a TFTP server that many use.
bool isForeignServerInstalled();

/// Microseconds of processor time, of its sender's and of our receiver's together, from that server's first
/// word to the last of @p file's blocks; NaN when it does not serve the file. It runs on a free port of the
/// loopback address, and no longer than the call.
double foreignTransfer(const QByteArray &file, int blockSize);

} // namespace bench
