#pragma once

#include "simulator/intervals.h"
#include "simulator/multicast_sender.h"

#include <QElapsedTimer>
#include <QTimer>

#include <functional>

namespace sim {

/// One level datagram and where it goes.
struct LevelPacket
{
    QByteArray payload;
    QHostAddress group;
    quint16 port = 0;
};

/// Sends level datagrams for a while after each request. Each packet is asked for anew, destination
/// included, so a change of the metering group moves the stream with its next datagram.
class MeterStream : public QObject
{
    Q_OBJECT

public:
    MeterStream(const Intervals &intervals, const std::function<LevelPacket()> &packet,
                QObject *parent = nullptr);

    bool open(const Station &station) { return m_sender.open(station); }

    /// Starts the stream, or keeps it going for its full time from now.
    void request();
    void stop() { m_timer.stop(); }

private:
    void sendPacket();

    std::function<LevelPacket()> m_packet;
    MulticastSender m_sender;
    QTimer m_timer;
    QElapsedTimer m_sinceRequest;
    int m_streamForMs;
};

} // namespace sim
