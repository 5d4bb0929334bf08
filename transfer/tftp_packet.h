#pragma once

#include <QByteArray>
#include <QString>
#include <QtGlobal>

/// Datagrams of the trivial file transfer protocol (RFC 1350), without a socket.
///
/// Every 16-bit field travels in network byte order. Nothing here fails: a datagram that is too short
/// for a field reads as 0 there.
namespace tftp {

enum Opcode : quint16 { ReadRequest = 1, WriteRequest = 2, Data = 3, Acknowledgement = 4 };

/// The block size whose write request the device takes in a form of its own.
constexpr int DeviceBlockSize = 256;
/// Opcode and block number; a shorter datagram carries no acknowledgement.
constexpr int HeaderSize = 4;
/// Block numbers have 16 bits and start at 1.
constexpr int MaxBlocks = 65535;

/// Asks the peer to take a file. For DeviceBlockSize: opcode, two zero bytes, name, two zero bytes. For
/// every other size the layout of RFC 1350 in mode "octet".
QByteArray writeRequest(const QString &fileName, int blockSize);

/// One block of file data; an empty @p block closes a file whose length is a multiple of the block size.
QByteArray dataPacket(quint16 number, const QByteArray &block);

/// The first two bytes, whatever they mean.
quint16 opcode(const QByteArray &datagram);

/// The third and fourth byte, whatever the opcode.
quint16 blockNumber(const QByteArray &datagram);

/// True when the peer refuses the transfer: the four bytes may stand anywhere, also behind zero bytes.
bool isRefusal(const QByteArray &datagram);

/// True when a file of @p size bytes and the short or empty block that closes it can be numbered.
bool fits(qint64 size, int blockSize);

} // namespace tftp
