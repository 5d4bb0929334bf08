#pragma once

#include "simulator/intervals.h"
#include "simulator/tftp_faults.h"
#include "simulator/tftp_uri.h"

#include <QNetworkDatagram>
#include <QTimer>
#include <QUdpSocket>

namespace sim {

/// Fetches one file at a time by TFTP (RFC 1350, mode "octet") from a server whose blocks are 256 bytes; a
/// shorter block, also an empty one, is the last. What is lost on the way is asked for again: the read
/// request, or the next block by repeating the last acknowledgement.
class TftpFetcher : public QObject
{
    Q_OBJECT

public:
    TftpFetcher(const Intervals &intervals, const TftpFaultSettings &faults, quint32 seed,
                QObject *parent = nullptr);

    /// Holds from the next packet on.
    void setFaults(const TftpFaultSettings &faults) { m_faults.setSettings(faults); }

    /// Ends in either finished() or failed(). `local` is the device's own address.
    void fetch(const TftpUri &source, const QHostAddress &local);

    /// Drops a running transfer without a word to the server.
    void abort();

signals:
    void finished(const QByteArray &file);

    /// The file did not come; `reason` is for the log.
    void failed(const QString &reason);

private:
    enum class State { Idle, Requesting, Receiving, Lingering };

    void readPackets();
    void handle(const QNetworkDatagram &datagram);
    bool isFromPeer(const QNetworkDatagram &datagram) const;
    void handleData(quint16 block, const QByteArray &content);
    void acceptBlock(const QByteArray &content);
    void acknowledge();
    void send(const QByteArray &packet);
    void handleTimeout();
    void waitForServer();
    void fail(const QString &reason);

    Intervals m_intervals;
    TftpFaults m_faults;
    QScopedPointer<QUdpSocket, QScopedPointerDeleteLater> m_socket; // often dropped from its own signal
    QTimer m_timer;
    TftpUri m_source;
    QByteArray m_file;
    State m_state = State::Idle;
    QHostAddress m_peer; // where the server answers from; a server with several addresses may use another
    quint16 m_peerPort = 0; // than it was asked at
    quint16 m_block = 0; // last one received
    int m_repeats = 0; // since the server was last heard
};

} // namespace sim
