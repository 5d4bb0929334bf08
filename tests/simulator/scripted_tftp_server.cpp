#include "tests/simulator/scripted_tftp_server.h"

#include <QNetworkDatagram>
#include <QtEndian>

namespace support {

namespace {

QByteArray packet(quint16 opcode, int number, const QByteArray &rest)
{
    QByteArray header(4, '\0');
    qToBigEndian<quint16>(opcode, header.data());
    qToBigEndian<quint16>(quint16(number), header.data() + 2);
    return header + rest;
}

} // namespace

ScriptedTftpServer::ScriptedTftpServer(const QByteArray &file, Manner manner, QObject *parent)
    : QObject(parent)
    , m_file(file)
    , m_manner(manner)
{
    const QHostAddress local(QStringLiteral("127.0.0.2"));
    m_listener.bind(local, 0);
    m_transfer.bind(QHostAddress(QHostAddress::LocalHost)); // as a socket bound to any address would choose
    m_impostor.bind(local, 0);
    m_repeat.setInterval(100);
    connect(&m_repeat, &QTimer::timeout, this, &ScriptedTftpServer::sendBlock);
    connect(&m_listener, &QUdpSocket::readyRead, this, &ScriptedTftpServer::takeRequest);
    connect(&m_transfer, &QUdpSocket::readyRead, this, &ScriptedTftpServer::takeAcknowledgement);
}

void ScriptedTftpServer::takeRequest()
{
    while (m_listener.hasPendingDatagrams()) {
        const QNetworkDatagram datagram = m_listener.receiveDatagram();
        if (!m_request.isEmpty() || m_manner == Manner::Deaf)
            continue;
        m_request = datagram.data();
        m_client = datagram.senderAddress();
        m_clientPort = quint16(datagram.senderPort());
        if (m_manner == Manner::Refusing)
            m_transfer.writeDatagram(packet(5, 1, QByteArray("no such file", 13)), m_client, m_clientPort);
        else
            sendBlock();
    }
}

void ScriptedTftpServer::takeAcknowledgement()
{
    while (m_transfer.hasPendingDatagrams()) {
        const QByteArray bytes = m_transfer.receiveDatagram().data();
        m_negatives += bytes.contains("NACK");
        if (m_done)
            continue;
        if (bytes == packet(4, m_block, {})) {
            m_done = m_file.size() < m_block * blockSize();
            ++m_block;
        }
        if (m_done)
            m_repeat.stop();
        else
            sendBlock();
    }
}

void ScriptedTftpServer::sendBlock()
{
    if (m_manner == Manner::Stalling && m_block > 2) {
        m_repeat.stop();
        return;
    }
    const QByteArray content = m_file.mid((m_block - 1) * blockSize(), blockSize());
    for (int copy = m_manner == Manner::Doubling ? 2 : 1; copy > 0; --copy)
        m_transfer.writeDatagram(packet(3, m_block, content), m_client, m_clientPort);
    if (m_manner == Manner::Impostor)
        m_impostor.writeDatagram(packet(3, m_block + 1, QByteArray(256, 'x')), m_client, m_clientPort);
    m_repeat.start();
}

} // namespace support
