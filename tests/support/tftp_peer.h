#pragma once

#include <QUdpSocket>

namespace support {

/// Bytes that differ from block to block, so that a lost, doubled or swapped block shows.
QByteArray pattern(int size);

/// The blank-separated words of @p text; "3*x" stands for three times "x".
QStringList words(const char *text);

/// Either end of a file transfer, played by hand, packet by packet, as deaf or as wrong as a test wants.
class TftpPeer : public QUdpSocket
{
public:
    explicit TftpPeer(const char *address = "127.0.0.1");

    /// "opcode/number/bytes after these" of the next packet; empty when none comes.
    QString take();
    /// The same packet as it came.
    QByteArray packet() const { return m_packet; }

    /// Answers the packet that was taken last. "-" says nothing; "aN" acknowledges block N, "dN:S" is block N
    /// with S bytes, all else is hex. Joined with "+", several go out at once.
    void answer(const QString &text) { answerInsteadOf(*this, text); }
    /// Answers, from this end's own port, what @p asked took last.
    void answerInsteadOf(const TftpPeer &asked, const QString &text);

private:
    QByteArray m_packet;
    QHostAddress m_address;
    quint16 m_port = 0;
};

} // namespace support
