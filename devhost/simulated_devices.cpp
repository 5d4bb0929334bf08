#include "devhost/simulated_devices.h"

#include <QCoreApplication>

namespace devhost {

namespace {

constexpr int FirstHost = 11;
constexpr int ControlPort = 47800;

} // namespace

SimulatedDevices::SimulatedDevices(const QString &program, QObject *parent)
    : QObject(parent)
    , m_program(program)
{
}

SimulatedDevices::~SimulatedDevices()
{
    // Before the folder goes: each saves its settings when it ends.
    qDeleteAll(m_devices);
}

QStringList SimulatedDevices::argumentsOf(int index, const QString &name) const
{
    QStringList arguments{QStringLiteral("--name"),
                          name,
                          QStringLiteral("--address"),
                          QStringLiteral("127.0.0.%1").arg(FirstHost + index),
                          QStringLiteral("--port"),
                          QString::number(ControlPort),
                          QStringLiteral("--seed"),
                          QString::number(index + 1),
                          QStringLiteral("--exit-with-parent"),
                          QStringLiteral("--parent"),
                          QString::number(QCoreApplication::applicationPid())};
    if (m_stateFolder.isValid())
        arguments << QStringLiteral("--state") << m_stateFolder.filePath(name + QStringLiteral(".json"));
    return arguments;
}

void SimulatedDevices::start(int count)
{
    for (int index = 0; index < count; ++index) {
        const QString name = QStringLiteral("KBX-%1").arg(index + 1, 4, 10, QLatin1Char('0'));
        auto *device = new SimulatedDevice(name, m_program, argumentsOf(index, name), this);
        connect(device, &SimulatedDevice::said, this,
                [this, name](const QString &line) { emit said(name, line); });
        connect(device, &SimulatedDevice::failed, this,
                [this, name](const QString &sentence) { emit failed(name, sentence); });
        connect(device, &SimulatedDevice::refused, this,
                [this, name](const QString &sentence) { emit failed(name, sentence); });
        connect(device, &SimulatedDevice::changed, this, [this, name] { emit changed(name); });
        m_devices.append(device);
        device->start();
    }
}

SimulatedDevice *SimulatedDevices::device(const QString &name) const
{
    for (SimulatedDevice *device : m_devices) {
        if (device->name() == name)
            return device;
    }
    return nullptr;
}

} // namespace devhost
