#pragma once

#include <QHostAddress>
#include <QTimer>
#include <QUdpSocket>

namespace support {

/// A TFTP server for one file, as simple as the protocol allows: it answers the first read request from
/// another address and port than it was asked at with 256-byte blocks, one at a time, and repeats the current
/// one after a while and on every packet that is not its acknowledgement.
class ScriptedTftpServer : public QObject
{
    Q_OBJECT

public:
    /// Departures from a good server.
    enum class Manner {
        Good,
        Deaf, ///< hears no request at all
        Refusing, ///< answers with an error packet
        Stalling, ///< goes silent after two blocks
        Oversized, ///< blocks of 512 bytes
        Doubling, ///< sends every block twice
        Impostor ///< a third port sends blocks of the same numbers as well
    };

    ScriptedTftpServer(const QByteArray &file, Manner manner, QObject *parent = nullptr);

    QHostAddress address() const { return m_listener.localAddress(); }
    quint16 port() const { return m_listener.localPort(); }
    QByteArray request() const { return m_request; } ///< the first one, whole
    bool isDone() const { return m_done; } ///< the last block was acknowledged
    int negatives() const { return m_negatives; } ///< packets that said "NACK"

private:
    void takeRequest();
    void takeAcknowledgement();
    void sendBlock();
    int blockSize() const { return m_manner == Manner::Oversized ? 512 : 256; }

    QByteArray m_file;
    Manner m_manner;
    QUdpSocket m_listener;
    QUdpSocket m_transfer;
    QUdpSocket m_impostor;
    QTimer m_repeat;
    QByteArray m_request;
    QHostAddress m_client;
    quint16 m_clientPort = 0;
    int m_block = 1;
    int m_negatives = 0;
    bool m_done = false;
};

} // namespace support
