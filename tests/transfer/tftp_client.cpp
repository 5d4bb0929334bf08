#include "tests/transfer/tftp_client.h"

#include <QtEndian>

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

TftpClient::TftpClient(double faults, quint32 seed)
    : m_faults(faults)
    , m_random(seed)
{
    connect(&m_socket, &QUdpSocket::readyRead, this, &TftpClient::read);
    connect(&m_repeat, &QTimer::timeout, this, &TftpClient::send);
    m_repeat.setInterval(8);
}

void TftpClient::fetch(const QHostAddress &server)
{
    m_server = server;
    m_socket.bind(QHostAddress(QHostAddress::AnyIPv4));
    m_last = QByteArray::fromHex("0001") + QByteArray("any.wav\0octet\0", 14);
    send();
}

int TftpClient::copies()
{
    const double chance = std::uniform_real_distribution<>(0, 1)(m_random);
    m_lost += chance < m_faults;
    return chance < m_faults ? 0 : chance < 2 * m_faults ? 2 : 1;
}

void TftpClient::send()
{
    for (int left = copies(); left > 0; --left)
        m_socket.writeDatagram(m_last, m_server, m_port);
    if (!m_finished)
        m_repeat.start();
}

void TftpClient::read()
{
    while (m_socket.hasPendingDatagrams()) {
        const QNetworkDatagram datagram = m_socket.receiveDatagram();
        for (int left = copies(); left > 0; --left)
            take(datagram);
    }
}

void TftpClient::take(const QNetworkDatagram &datagram)
{
    m_server = datagram.senderAddress();
    m_port = quint16(datagram.senderPort());
    const QByteArray bytes = datagram.data();
    const quint16 number = qFromBigEndian<quint16>(bytes.constData() + 2);
    emit blockArrived();
    if (m_finished)
        send(); // the acknowledgement of the last block was lost
    if (number != m_expected || m_finished)
        return;
    m_content.append(bytes.mid(4));
    m_last = stubbornAnswer.isEmpty() ? QByteArray::fromHex("0004") + bytes.mid(2, 2) : stubbornAnswer;
    ++m_expected;
    m_finished = bytes.size() < 260;
    if (m_finished)
        m_repeat.stop();
    send();
    if (m_finished)
        emit finished();
}
