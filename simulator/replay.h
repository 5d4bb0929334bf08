#pragma once

#include "simulator/orders.h"
#include "simulator/presence.h"
#include "simulator/recording.h"

#include <QElapsedTimer>
#include <QHash>

namespace sim {

/// A device that answers as a recorded one did, in its order and at its pace, levels included. Orders for it
/// are those of presenceOrders().
class Replay : public QObject
{
    Q_OBJECT

public:
    Replay(const Recording &recording, const Options &options, const Intervals &intervals,
           QObject *parent = nullptr);

    /// An empty text, or why the device cannot appear.
    QString start();
    quint16 port() const { return m_presence.port(); }

    Orders *orders() { return &m_orders; }

private:
    /// The recorded requests of one text.
    struct Occurrences
    {
        QVector<int> requests;
        int used = 0;
        int lastAnswered = -1;
    };

    QVector<Answer> answer(const QByteArray &text);
    const RecordedRequest *next(const QByteArray &text);
    QByteArray unrecorded(const Request &request) const;
    void follow(const Request &request, const RecordedRequest &recorded);
    void followTarget(const QByteArray &reply);
    void playLevels(qint64 fromMs);
    void sendLevels();
    void waitForLevels();
    void applyOrder(const QString &path, const QJsonValue &order);
    QByteArray announcement(quint16 controlPort) const;

    Recording m_recording;
    QHash<QByteArray, Occurrences> m_occurrences;
    QHash<QString, QByteArray> m_lastReplies; // to gets, by path
    Orders m_orders;
    Presence m_presence;
    QString m_refuse;
    Packet m_levels; // the next ones, and where levels go
    QTimer m_levelTimer;
    QElapsedTimer m_levelClock;
    qint64 m_levelsFromMs = 0; // recorded time at which the clock started
    int m_nextLevels = 0;
};

} // namespace sim
