#pragma once

#include "simulator/cue_loader.h"
#include "simulator/device_model.h"
#include "simulator/orders.h"
#include "simulator/presence.h"

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
    quint16 port() const { return m_presence.port(); }

    Orders *orders() { return &m_orders; }

    /// Writes the state file, if there is one to keep.
    void save();

private:
    void connectModel();
    QString restore();
    void live();
    void follow(const QString &path, const QJsonValue &order);
    void handlePresence(bool here);
    void pushLevels();
    void startFetch(const TftpUri &source);
    void reboot();
    Packet levelPacket() const;

    Options m_options;
    Intervals m_intervals;
    DeviceModel m_model;
    Orders m_orders;
    Presence m_presence;
    TftpFetcher m_fetcher;
    CueLoader m_loader;
    QTimer m_lifeTimer;
    QElapsedTimer m_lived;
    QTimer m_saveTimer;
    QTimer m_shutDownTimer;
    QTimer m_clipTimer;
};

} // namespace sim
