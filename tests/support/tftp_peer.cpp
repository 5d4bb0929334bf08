#include "tests/support/tftp_peer.h"

#include <QNetworkDatagram>
#include <QTest>
#include <QtEndian>

#include <random>

namespace support {

namespace {

QByteArray header(quint16 opcode, const QStringRef &number)
{
    QByteArray bytes(4, '\0');
    qToBigEndian(opcode, bytes.data());
    qToBigEndian(quint16(number.toUInt()), bytes.data() + 2);
    return bytes;
}

QByteArray packetOf(const QString &text)
{
    const int colon = text.indexOf(QLatin1Char(':'));
    if (text.startsWith(QLatin1Char('a')))
        return header(4, text.midRef(1));
    if (text.startsWith(QLatin1Char('d')))
        return header(3, text.midRef(1, colon - 1)) + pattern(text.midRef(colon + 1).toInt());
    return QByteArray::fromHex(text.toLatin1());
}

} // namespace

QByteArray pattern(int size)
{
    std::mt19937 random(quint32(size) + 1);
    QByteArray bytes(size, Qt::Uninitialized);
    for (char &byte : bytes)
        byte = char(random());
    return bytes;
}

QStringList words(const char *text)
{
    QStringList list;
    for (const QString &word : QString::fromLatin1(text).split(QLatin1Char(' '), Qt::SkipEmptyParts)) {
        const int star = word.indexOf(QLatin1Char('*'));
        for (int left = star < 0 ? 1 : word.leftRef(star).toInt(); left > 0; --left)
            list.append(word.mid(star + 1));
    }
    return list;
}

TftpPeer::TftpPeer(const char *address)
{
    bind(QHostAddress(QLatin1String(address)));
}

QString TftpPeer::take()
{
    if (!QTest::qWaitFor([this] { return hasPendingDatagrams(); }, 3000))
        return {};
    const QNetworkDatagram datagram = receiveDatagram();
    m_packet = datagram.data();
    m_address = datagram.senderAddress();
    m_port = quint16(datagram.senderPort());
    const auto field
        = [this](int at) { return qFromBigEndian<quint16>(m_packet.leftJustified(4, '\0').data() + at); };
    return QStringLiteral("%1/%2/%3").arg(field(0)).arg(field(2)).arg(m_packet.size() - 4);
}

void TftpPeer::answerInsteadOf(const TftpPeer &asked, const QString &text)
{
    for (const QString &one : text.split(QLatin1Char('+'))) {
        if (text != QLatin1String("-"))
            writeDatagram(packetOf(one), asked.m_address, asked.m_port);
    }
}

} // namespace support
