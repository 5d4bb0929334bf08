#pragma once

#include <QByteArray>
#include <QList>
#include <QStringList>
#include <QUdpSocket>

namespace proof {

class Station;

/// Hears the levels that a station's device sends, beside the editor, and compares them with the meters.
class LevelTap
{
public:
    explicit LevelTap(const Station &station)
        : m_station(station)
    {
    }

    /// Listens to the group that the device sends to now.
    void listen();
    /// Takes what has come. To be called before anything that holds up the event loop, and with it the
    /// meters.
    void hear();
    /// Meters that show none of the last levels, and what is wrong with the datagrams themselves.
    QStringList differences() const;

private:
    QStringList shapeProblems(const QByteArray &levels) const;
    QStringList silenceProblems(const QByteArray &levels) const;
    QStringList meterProblems() const;

    const Station &m_station;
    QUdpSocket m_socket;
    QString m_group;
    QList<QByteArray> m_heard; ///< the last ones, the newest last
};

} // namespace proof
