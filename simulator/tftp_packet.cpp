#include "simulator/tftp_packet.h"

#include <QtEndian>

namespace sim {
namespace tftp {

namespace {

QByteArray header(Opcode opcode, quint16 number)
{
    QByteArray bytes(HeaderSize, '\0');
    qToBigEndian<quint16>(opcode, bytes.data());
    qToBigEndian<quint16>(number, bytes.data() + 2);
    return bytes;
}

} // namespace

QByteArray readRequestPacket(const QString &file)
{
    QByteArray packet = header(ReadRequest, 0).left(2);
    packet += file.toUtf8();
    packet += '\0';
    packet += "octet";
    packet += '\0';
    return packet;
}

QByteArray acknowledgementPacket(quint16 block)
{
    return header(Acknowledgement, block);
}

QByteArray errorPacket(quint16 code, const QByteArray &message)
{
    return header(Error, code) + message + '\0';
}

quint16 opcodeOf(const QByteArray &packet)
{
    return qFromBigEndian<quint16>(packet.constData());
}

quint16 numberOf(const QByteArray &packet)
{
    return qFromBigEndian<quint16>(packet.constData() + 2);
}

} // namespace tftp
} // namespace sim
