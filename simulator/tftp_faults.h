#pragma once

#include <QByteArray>
#include <QJsonObject>
#include <QRandomGenerator>
#include <QVector>

namespace sim {

/// What is to go wrong in a file transfer, on the device's side of it.
struct TftpFaultSettings
{
    enum class Kind {
        None,
        LostAck, ///< the first acknowledgement of every fifth block is lost
        DuplicateAck, ///< every acknowledgement is sent twice
        WrongBlock, ///< every fifth block is acknowledged under a wrong number first
        Nack, ///< the third block is answered with an error packet that says "NACK"
        Silence ///< nothing is sent any more from the third block on
    };

    Kind kind = Kind::None;
    double drop = 0; ///< probability, 0 to 1, that a packet of either side is lost
    double duplicate = 0; ///< probability that a packet of either side arrives twice

    /// The kinds as options name them, in their order, separated by blanks.
    static constexpr char KindWords[] = "none lost-ack duplicate-ack wrong-block nack silence";
};

/// The settings under the names that the command line has for them, checked.
TftpFaultSettings tftpFaultSettings(const QJsonObject &faults);

/// Turns each packet of a transfer into what really travels.
class TftpFaults
{
public:
    TftpFaults(const TftpFaultSettings &settings, quint32 seed);

    void setSettings(const TftpFaultSettings &settings) { m_settings = settings; }

    /// What goes out in place of the acknowledgement of `block`.
    QVector<QByteArray> acknowledge(quint16 block);

    /// How often a packet arrives: 0, 1 or 2 times.
    int copies();

    /// The transfer is refused by the device's own fault and ends with this packet.
    bool refuses(quint16 block) const;

private:
    TftpFaultSettings m_settings;
    QRandomGenerator m_random;
    int m_lostBlock = -1; // the block whose first acknowledgement was swallowed last
};

} // namespace sim
