#pragma once

#include <QNetworkDatagram>
#include <QTimer>
#include <QUdpSocket>

#include <random>

/// Bytes that differ from block to block, so that a lost, doubled or swapped block shows.
QByteArray pattern(int size);

/// The blank-separated words of @p text; "3*x" stands for three times "x".
QStringList words(const char *text);

/// Fetches a file in blocks of 256 bytes and repeats what gets lost. A share of the packets in either
/// direction can be dropped or doubled, in an order that the seed fixes.
class TftpClient : public QObject
{
    Q_OBJECT

public:
    explicit TftpClient(double faults = 0, quint32 seed = 1);

    void fetch(const QHostAddress &server);
    QByteArray content() const { return m_content; }
    int packetsLost() const { return m_lost; }

    /// Answers every block with this datagram instead of an acknowledgement.
    QByteArray stubbornAnswer;

signals:
    void blockArrived();
    void finished();

private:
    int copies();
    void send();
    void read();
    void take(const QNetworkDatagram &datagram);

    QUdpSocket m_socket;
    QTimer m_repeat;
    QHostAddress m_server;
    quint16 m_port = 69;
    QByteArray m_last;
    QByteArray m_content;
    quint16 m_expected = 1;
    bool m_finished = false;
    double m_faults;
    int m_lost = 0;
    std::mt19937 m_random;
};
