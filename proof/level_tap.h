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
    /// Meters that show none of the last levels, and what is wrong with the datagrams themselves.
    QStringList differences();

private:
    void read();
    QStringList shapeProblems(const QByteArray &levels) const;
    QStringList silenceProblems(const QByteArray &levels) const;
    QStringList meterProblems() const;

    const Station &m_station;
    QUdpSocket m_socket;
    QString m_group;
    QList<QByteArray> m_heard; ///< the last ones, the newest last
};

} // namespace proof
