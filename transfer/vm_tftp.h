#pragma once

#include <QByteArray>
#include <QHostAddress>
#include <QObject>
#include <QTimer>
#include <QUdpSocket>

#include <chrono>
#include <cstdint>

/// Moves one file, held in memory, to a peer over UDP in TFTP blocks (packets of RFC 1350).
///
/// Stop-and-wait: one packet is in flight, every step runs in an event of its own on the thread that owns
/// the object. The owner constructs it, calls setUp() once, then sendFileName() to ask the peer to take
/// the file, or startFirmwareUpdates() to answer a read request with the first block at once.
///
/// A transfer ends with finishedUpdates(); failure() then says why, if it failed.
class VmTftp : public QObject
{
    Q_OBJECT

public:
    struct Intervals
    {
        std::chrono::milliseconds packetTimeout{5000}; ///< before a packet is sent again
        std::chrono::milliseconds connectWait{60000}; ///< longest wait for the socket to be connected
        std::chrono::milliseconds connectPoll{100}; ///< between two looks during that wait
        std::chrono::milliseconds step{1}; ///< before each step of the transfer
    };

    enum class Failure {
        None,
        TooLong, ///< more blocks than a block number can count
        NotSent, ///< the socket did not take a packet
        Refused, ///< the peer answered "NACK"
        NoAnswer ///< too many time-outs or wrong acknowledgements
    };
    Q_ENUM(Failure)

    /// This many time-outs or wrong acknowledgements in a row are answered with a repeat, one more is not.
    static constexpr int MaxRetries = 10;

    /// @param blockSize bytes of file data in a block, at least 1
    /// @param fileName  sent with a write request only
    /// @param peer      IPv4; datagrams from any other address are ignored
    VmTftp(int blockSize, const QString &fileName, const QByteArray &data, const QHostAddress &peer,
           quint16 port, QObject *parent);
    ~VmTftp() override;

    /// Before setUp(); for hosts and tests that cannot wait as long as a device may.
    void setIntervals(const Intervals &intervals) { m_intervals = intervals; }

    /// Binds to a port that the system picks.
    void setUp();

    Failure failure() const { return m_failure; }

signals:
    /// A datagram with at least an opcode and a block number. For direct connections only.
    void DeviceResponse(QHostAddress &addr, QByteArray bytes);
    void ackEvent(uint16_t ack, uint16_t seq);
    /// The transfer has ended, with an error if the argument is true. May come again when the peer goes on
    /// sending after the end.
    void finishedUpdates(bool);
    /// Per cent; none is reported for the last block.
    void progress(int);
    void logData(QString);

public slots:
    void readPendingDataGram();
    void handleDataGram(QHostAddress &addr, QByteArray bytes);
    /// A write request is repeated until the peer answers or cancelFirmwareUpdates() is called.
    void sendFileName();
    void startFirmwareUpdates();
    /// Heeded only while a write request is repeated; handleDone() ends a transfer at any time.
    void cancelFirmwareUpdates();
    void processFirmwareUpdates();
    void processAck(uint16_t ack, uint16_t seq);
    void handleTftpTimeout();
    void handleDone();
    void handleSocketConnected();

private:
    enum State { Done, AskToWrite, AnswerRead, FullBlock, LastBlock };

    void begin(State state);
    bool prepare(quint16 firstSequence);
    void connectToPeer();
    void askToWrite();
    void answerRead();
    void sendBlock(const QString &logLine);
    bool send(const QByteArray &packet);
    void acceptAcknowledgement();
    State stateForRemaining() const;
    void end(Failure failure);
    void reportEnd();
    void runLater();
    bool failed() const { return m_failure != Failure::None; }
    int remaining() const { return m_data.size() - m_offset; }
    int percent() const;

    const int m_blockSize;
    const QHostAddress m_peer;
    const quint16 m_port;
    const QString m_fileName;
    const QByteArray m_data;
    int m_offset = 0; ///< the bytes before it are acknowledged
    Intervals m_intervals;
    QUdpSocket m_socket;
    QTimer m_timeout;
    State m_state = Done;
    Failure m_failure = Failure::None;
    quint16 m_totalBlocks = 0;
    quint16 m_sequence = 0;
    quint8 m_retries = 0;
    bool m_connected = false;
    bool m_cancel = false;
    bool m_endPending = false; ///< the end is decided and about to be reported
};
