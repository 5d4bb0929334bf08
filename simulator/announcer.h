#pragma once

#include "simulator/multicast_sender.h"

#include <QTimer>

namespace sim {

/// Makes the device known: one announcement at once and then one an interval.
class Announcer : public QObject
{
    Q_OBJECT

public:
    explicit Announcer(int intervalMs, QObject *parent = nullptr);

    bool open(const Station &station) { return m_sender.open(station); }
    QString errorText() const { return m_sender.errorText(); }
    void start(const QByteArray &announcement);
    void stop() { m_timer.stop(); }

private:
    void announce();

    MulticastSender m_sender;
    QByteArray m_announcement;
    QTimer m_timer;
};

} // namespace sim
