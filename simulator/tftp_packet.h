#pragma once

#include <QByteArray>
#include <QString>

namespace sim {

/// The packets of RFC 1350 that a client reads and writes. All numbers are in network byte order.
namespace tftp {

constexpr int HeaderSize = 4; ///< opcode and block or error number
constexpr int BlockSize = 256; ///< this service's blocks; a shorter one is the last

enum Opcode : quint16 { ReadRequest = 1, Data = 3, Acknowledgement = 4, Error = 5 };

QByteArray readRequestPacket(const QString &file);
QByteArray acknowledgementPacket(quint16 block);
QByteArray errorPacket(quint16 code, const QByteArray &message);

/// Both need a packet of at least HeaderSize bytes.
quint16 opcodeOf(const QByteArray &packet);
quint16 numberOf(const QByteArray &packet); ///< block or error number

} // namespace tftp

} // namespace sim
