#include "transfer/tftp_packet.h"

#include <QtEndian>

namespace tftp {

namespace {

void append(QByteArray &packet, quint16 field)
{
    const quint16 bigEndian = qToBigEndian(field);
    packet.append(reinterpret_cast<const char *>(&bigEndian), sizeof bigEndian);
}

quint16 fieldAt(const QByteArray &datagram, int offset)
{
    if (datagram.size() < offset + int(sizeof(quint16)))
        return 0;
    return qFromBigEndian<quint16>(datagram.constData() + offset);
}

} // namespace

QByteArray writeRequest(const QString &fileName, int blockSize)
{
    QByteArray packet;
    append(packet, WriteRequest);
    if (blockSize == DeviceBlockSize)
        packet.append(2, '\0').append(fileName.toLatin1()).append(2, '\0');
    else
        packet.append(fileName.toLatin1()).append('\0').append("octet").append('\0');
    return packet;
}

QByteArray dataPacket(quint16 number, const QByteArray &block)
{
    QByteArray packet;
    packet.reserve(HeaderSize + block.size());
    append(packet, Data);
    append(packet, number);
    return packet.append(block);
}

quint16 opcode(const QByteArray &datagram)
{
    return fieldAt(datagram, 0);
}

quint16 blockNumber(const QByteArray &datagram)
{
    return fieldAt(datagram, 2);
}

bool isRefusal(const QByteArray &datagram)
{
    return datagram.contains("NACK");
}

bool fits(qint64 size, int blockSize)
{
    return blockSize > 0 && size / blockSize + 1 <= MaxBlocks;
}

} // namespace tftp
