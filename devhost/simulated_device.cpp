#include "devhost/simulated_device.h"

namespace devhost {

namespace {

// A simulated device ends within a few ms; it only has its settings to save.
constexpr int EndMs = 2000;

} // namespace

SimulatedDevice::SimulatedDevice(const QString &name, const QString &program, const QStringList &arguments,
                                 QObject *parent)
    : QObject(parent)
    , m_name(name)
    , m_arguments(arguments)
{
    m_process.setProgram(program);
    m_process.setProcessChannelMode(QProcess::MergedChannels);
    connect(&m_process, &QProcess::readyReadStandardOutput, this, &SimulatedDevice::passOnOutput);
    connect(&m_process, QOverload<int, QProcess::ExitStatus>::of(&QProcess::finished), this,
            &SimulatedDevice::handleFinished);
    connect(&m_process, &QProcess::errorOccurred, this, [this](QProcess::ProcessError error) {
        if (error == QProcess::FailedToStart)
            emit failed(tr("The simulated device %1 cannot be started: %2. Build kbx-simulator beside the "
                           "host.")
                            .arg(m_name, m_process.errorString()));
    });
}

SimulatedDevice::~SimulatedDevice()
{
    m_process.disconnect(this);
    if (m_process.state() == QProcess::NotRunning)
        return;
    m_process.terminate();
    if (!m_process.waitForFinished(EndMs))
        m_process.kill();
    m_process.waitForFinished(EndMs);
}

void SimulatedDevice::start(const QStringList &faults)
{
    m_faults = faults;
    if (m_process.state() == QProcess::NotRunning) {
        launch();
        return;
    }
    m_restarting = true;
    m_process.terminate();
}

void SimulatedDevice::launch()
{
    m_restarting = false;
    m_process.setArguments(m_arguments + m_faults);
    m_process.start();
}

void SimulatedDevice::passOnOutput()
{
    while (m_process.canReadLine())
        emit said(QString::fromUtf8(m_process.readLine()).trimmed());
}

void SimulatedDevice::handleFinished()
{
    passOnOutput();
    if (m_restarting) {
        launch();
        return;
    }
    emit failed(tr("The simulated device %1 ended by itself (code %2). Choose No faults in its menu of "
                   "faults to start it again.")
                    .arg(m_name)
                    .arg(m_process.exitCode()));
}

} // namespace devhost
