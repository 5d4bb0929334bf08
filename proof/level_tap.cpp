#include "proof/level_tap.h"

#include "proof/station.h"
#include "tests/support/loopback.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QNetworkDatagram>
#include <QWidget>

#include <algorithm>

namespace proof {

namespace {

constexpr int DatagramSize = 19;
constexpr int DatagramsKept = 40; // of two seconds: editors take one at a time
constexpr int Silence = -100; // dB
constexpr int Loudest = 20;

/// Where the levels of a block's channels stand in a datagram (docs/device-guide.md, "Levels").
struct Place
{
    const char *title;
    const char *section;
    int firstByte;
};

constexpr Place Places[] = {{"Dante Network Rx", "dante_rx", 3}, {"USB Playback", "usb_playback", 7},
                            {"Bluetooth In", "bt_sink", 9},      {"Dante Network Tx", "dante_tx", 12},
                            {"USB Record", "usb_record", 16},    {"Bluetooth Out", "bt_source", 18}};

int levelAt(const QByteArray &levels, int byte)
{
    return static_cast<signed char>(levels.at(byte));
}

} // namespace

void LevelTap::listen()
{
    const QJsonValue held = m_station.process().ask(QStringLiteral("/system/metering"));
    const QString group = held[QLatin1String("ip")].toString();
    const int port = held[QLatin1String("port")].toInt();
    const QString name = QStringLiteral("%1:%2").arg(group).arg(port);
    if (name == m_group || group.isEmpty())
        return;
    m_group = name;
    m_heard.clear();
    m_socket.close();
    if (m_socket.bind(QHostAddress(QHostAddress::AnyIPv4), quint16(port),
                      QUdpSocket::ShareAddress | QUdpSocket::ReuseAddressHint))
        m_socket.joinMulticastGroup(QHostAddress(group), loopbackInterface());
}

void LevelTap::hear()
{
    // A port that another program holds is not heard.
    while (m_socket.state() == QUdpSocket::BoundState && m_socket.hasPendingDatagrams()) {
        const QNetworkDatagram datagram = m_socket.receiveDatagram();
        if (datagram.senderAddress().isEqual(m_station.process().address(),
                                             QHostAddress::ConvertV4MappedToIPv4))
            m_heard.append(datagram.data());
    }
    while (m_heard.size() > DatagramsKept)
        m_heard.removeFirst();
}

QStringList LevelTap::differences() const
{
    if (m_heard.isEmpty())
        return {};
    const QStringList misshapen = shapeProblems(m_heard.last());
    return misshapen.isEmpty() ? silenceProblems(m_heard.last()) + meterProblems() : misshapen;
}

QStringList LevelTap::shapeProblems(const QByteArray &levels) const
{
    if (levels.size() != DatagramSize || levels.at(1) != 0 || levels.at(2) != 0)
        return {QStringLiteral("a level datagram of another shape: ") + QString::fromLatin1(levels.toHex())};
    for (int byte = Places[0].firstByte; byte < DatagramSize; ++byte) {
        if (levelAt(levels, byte) < Silence || levelAt(levels, byte) > Loudest)
            return {QStringLiteral("a level of %1 dB").arg(levelAt(levels, byte))};
    }
    return {};
}

QStringList LevelTap::silenceProblems(const QByteArray &levels) const
{
    QStringList problems;
    const QJsonValue dsp = m_station.process().ask(QStringLiteral("/preset/dsp"));
    for (const Place &place : Places) {
        const QJsonArray channels = dsp[QLatin1String(place.section)].toArray();
        for (int channel = 0; channel < channels.size(); ++channel) {
            const int level = levelAt(levels, place.firstByte + channel);
            if (channels.at(channel)[QLatin1String("mute")].toBool() && level != Silence)
                problems.append(QStringLiteral("%1, channel %2 is muted and sounds at %3 dB")
                                    .arg(QLatin1String(place.title))
                                    .arg(channel + 1)
                                    .arg(level));
        }
    }
    return problems;
}

QStringList LevelTap::meterProblems() const
{
    QStringList problems;
    for (const Place &place : Places) {
        const QWidget *block = m_station.block(QLatin1String(place.title));
        const QList<QWidget *> faders
            = block ? block->findChildren<QWidget *>(QStringLiteral("vmdspgain")) : QList<QWidget *>();
        for (int channel = 0; channel < faders.size(); ++channel) {
            const QWidget *meter = nullptr;
            for (const QWidget *part : faders.at(channel)->findChildren<QWidget *>())
                meter = part->inherits("VMMeter") ? part : meter;
            const int shown = meter ? meter->property("dbValuePort1").toInt() : 0;
            const bool heard = std::any_of(m_heard.begin(), m_heard.end(), [&](const QByteArray &levels) {
                return levelAt(levels, place.firstByte + channel) == shown;
            });
            if (faders.at(channel)->isEnabled() && !heard)
                problems.append(QStringLiteral("the meter of %1, channel %2 shows %3 dB, its level is %4")
                                    .arg(QLatin1String(place.title))
                                    .arg(channel + 1)
                                    .arg(shown)
                                    .arg(levelAt(m_heard.last(), place.firstByte + channel)));
        }
    }
    return problems;
}

} // namespace proof
