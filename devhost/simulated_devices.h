#pragma once

#include "devhost/simulated_device.h"

#include <QTemporaryDir>

namespace devhost {

/// The simulated devices that the host started: KBX-0001 on 127.0.0.11 and so on, all on the
/// loopback interface.
class SimulatedDevices : public QObject
{
    Q_OBJECT

public:
    /// @p program is the simulator's executable.
    explicit SimulatedDevices(const QString &program, QObject *parent = nullptr);
    ~SimulatedDevices() override;

    /// Their addresses end with 127.0.0.210.
    static constexpr int Most = 200;

    /// Starts @p count devices, 0 to Most.
    void start(int count);
    /// Null for a device that the host did not start.
    SimulatedDevice *device(const QString &name) const;

signals:
    void said(const QString &deviceName, const QString &line);
    /// A sentence for the user on what was not done, or on a device that ended.
    void failed(const QString &deviceName, const QString &sentence);
    /// Other things are on than before.
    void changed(const QString &deviceName);

private:
    QStringList argumentsOf(int index, const QString &name) const;

    QString m_program;
    QTemporaryDir m_stateFolder;
    QList<SimulatedDevice *> m_devices;
};

} // namespace devhost
