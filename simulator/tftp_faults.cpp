#include "simulator/tftp_faults.h"

#include "simulator/tftp_packet.h"

#include <QStringList>

namespace sim {

namespace {

using Kind = TftpFaultSettings::Kind;

constexpr quint16 FaultyBlock = 3;
constexpr quint16 FaultyEvery = 5;

} // namespace

TftpFaultSettings tftpFaultSettings(const QJsonObject &faults)
{
    const QStringList kinds = QString::fromLatin1(TftpFaultSettings::KindWords).split(QLatin1Char(' '));
    TftpFaultSettings settings;
    settings.kind = Kind(kinds.indexOf(faults.value(QStringLiteral("tftp-fault")).toString()));
    settings.drop = faults.value(QStringLiteral("tftp-drop")).toDouble();
    settings.duplicate = faults.value(QStringLiteral("tftp-duplicate")).toDouble();
    return settings;
}

TftpFaults::TftpFaults(const TftpFaultSettings &settings, quint32 seed)
    : m_settings(settings)
    , m_random(seed)
{
}

QVector<QByteArray> TftpFaults::acknowledge(quint16 block)
{
    const QByteArray packet = tftp::acknowledgementPacket(block);
    const bool unlucky = block % FaultyEvery == 0;
    switch (m_settings.kind) {
    case Kind::LostAck:
        if (unlucky && m_lostBlock != block) {
            m_lostBlock = block;
            return {};
        }
        return {packet};
    case Kind::DuplicateAck:
        return {packet, packet};
    case Kind::WrongBlock:
        return unlucky ? QVector<QByteArray>{tftp::acknowledgementPacket(quint16(block + 7)), packet}
                       : QVector<QByteArray>{packet};
    case Kind::Silence:
        return block < FaultyBlock ? QVector<QByteArray>{packet} : QVector<QByteArray>{};
    case Kind::None:
    case Kind::Nack:
        break;
    }
    return {packet};
}

int TftpFaults::copies()
{
    const bool lost = m_random.generateDouble() < m_settings.drop;
    const bool doubled = m_random.generateDouble() < m_settings.duplicate;
    return lost ? 0 : doubled ? 2 : 1;
}

bool TftpFaults::refuses(quint16 block) const
{
    return m_settings.kind == Kind::Nack && block == FaultyBlock;
}

} // namespace sim
