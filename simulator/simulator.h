#pragma once

#include "simulator/control_service.h"
#include "simulator/cue_loader.h"
#include "simulator/device_model.h"
#include "simulator/intervals.h"
#include "simulator/multicast_stream.h"
#include "simulator/options.h"

#include <QElapsedTimer>
#include <QTimer>

namespace sim {

/// A device on the network: the model behind its sockets, its clock and its state file.
class Simulator : public QObject
{
    Q_OBJECT

public:
    Simulator(const Options &options, const Intervals &intervals, QObject *parent = nullptr);
    ~Simulator() override;

    /// An empty text, or why the device cannot appear; then it is not on the network.
    QString start();
    quint16 port() const { return m_control.port(); }

    /// Writes the state file, if there is one to keep.
    void save();

private:
    void connectModel();
    QString openSockets();
    QString restore();
    void live();
    void appear();
    void disappear();
    void startFetch(const TftpUri &source);
    void reboot();
    void vanishWhenDue(int answered);
    Packet announcement() const;
    Packet levelPacket() const;

    Options m_options;
    Intervals m_intervals;
    DeviceModel m_model;
    ControlService m_control;
    MulticastStream m_announcements;
    MulticastStream m_meters;
    TftpFetcher m_fetcher;
    CueLoader m_loader;
    QTimer m_lifeTimer;
    QElapsedTimer m_lived;
    QTimer m_saveTimer;
    QTimer m_returnTimer;
    QTimer m_shutDownTimer;
};

} // namespace sim
