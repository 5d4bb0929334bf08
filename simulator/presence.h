#pragma once

#include "simulator/control_service.h"
#include "simulator/intervals.h"
#include "simulator/multicast_stream.h"
#include "simulator/options.h"

namespace sim {

/// A device on its network: announced, answering and sending levels, or silent.
class Presence : public QObject
{
    Q_OBJECT

public:
    /// What the device has to say.
    struct Voice
    {
        ControlService::Answerer answer;
        std::function<QByteArray(quint16 controlPort)> announcement;
        std::function<Packet()> levels;
    };

    Presence(const Options &options, const Intervals &intervals, const Voice &voice,
             QObject *parent = nullptr);

    /// An empty text, or why the device cannot be on the network.
    QString open();
    quint16 port() const { return m_control.port(); }

    /// Does what an order for "/faults" or "/present" has just changed; `faults` are those that hold now.
    /// Other orders are none of its business.
    void applyOrder(const QString &path, const QJsonValue &order, const FaultSettings &faults);

    bool isHere() const { return !m_control.isSilent(); }
    void appear();
    void vanish();

    /// Appears again so much later, unless it does before.
    void returnIn(int ms) { m_returnTimer.start(ms); }

    /// Levels for so long from now.
    void streamLevels(int ms) { m_levels.start(ms); }
    void sendLevels() { m_levels.sendNow(); }
    void stopLevels() { m_levels.stop(); }

signals:
    void changed(bool here);

private:
    void countRequest();

    Options m_options;
    Voice m_voice;
    ControlService m_control;
    MulticastStream m_announcements;
    MulticastStream m_levels;
    QTimer m_returnTimer;
    int m_returnAfterMs = 0;
    int m_untilVanishing = 0;
};

} // namespace sim
