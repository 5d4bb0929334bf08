#include "devhost/simulated_device.h"

#include "devhost/faults.h"
#include "devhost/refusals.h"

#include <QJsonArray>
#include <QJsonDocument>

namespace devhost {

namespace {

// A simulated device ends within a few ms; it only has its settings to save.
constexpr int EndMs = 2000;

} // namespace

SimulatedDevice::SimulatedDevice(const QString &name, const QString &program, const QStringList &arguments,
                                 QObject *parent)
    : QObject(parent)
    , m_name(name)
{
    m_process.setProgram(program);
    m_process.setArguments(arguments + QStringList{QStringLiteral("--orders")});
    m_process.setProcessChannelMode(QProcess::MergedChannels);
    connect(&m_process, &QProcess::started, this, &SimulatedDevice::changed);
    connect(&m_process, &QProcess::readyReadStandardOutput, this, &SimulatedDevice::readOutput);
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

void SimulatedDevice::start()
{
    if (m_process.state() == QProcess::NotRunning)
        m_process.start();
}

void SimulatedDevice::order(const QString &path, const QJsonValue &value)
{
    if (isRunning())
        send({{QStringLiteral("set"), path}, {QStringLiteral("value"), value}});
    else
        emit refused(tr("The simulated device %1 does not run. Press Start Again.").arg(m_name));
}

void SimulatedDevice::orderAllWell()
{
    const QVector<Order> orders = allWell(m_nodes);
    for (const Order &each : orders)
        order(each.path, each.value);
}

void SimulatedDevice::send(const QJsonObject &order)
{
    m_process.write(QJsonDocument(order).toJson(QJsonDocument::Compact) + '\n');
}

QJsonValue SimulatedDevice::value(const QString &path) const
{
    QJsonValue value = m_nodes;
    for (const QString &part : path.split(QLatin1Char('/'), Qt::SkipEmptyParts)) {
        if (value.isArray())
            value = value.toArray().at(part.toInt());
        else
            value = value.toObject().value(part);
    }
    return value;
}

QStringList SimulatedDevice::channels() const
{
    return channelsOf(m_nodes);
}

QString SimulatedDevice::summary() const
{
    return isRunning() ? summaryOf(m_nodes) : tr("does not run");
}

void SimulatedDevice::readOutput()
{
    while (m_process.canReadLine()) {
        const QByteArray line = m_process.readLine().trimmed();
        if (line.startsWith('{'))
            readAnswer(line);
        else
            emit said(QString::fromUtf8(line));
    }
}

void SimulatedDevice::readAnswer(const QByteArray &line)
{
    const QJsonObject answer = QJsonDocument::fromJson(line).object();
    const QString path = answer.value(QLatin1String("param")).toString();
    const QString result = answer.value(QLatin1String("result")).toString(QStringLiteral("OK"));
    const QString node = path.section(QLatin1Char('/'), 1, 1);
    if (result != QLatin1String("OK")) {
        emit refused(tr("The simulated device %1 did not do that: %2.").arg(m_name, shortened(result)));
        emit changed(); // what was shown as wanted is not so
    } else if (path == QLatin1Char('/') + node) {
        m_nodes.insert(node, answer.value(QLatin1String("value")));
        emit changed();
    } else if (!node.isEmpty()) {
        send({{QStringLiteral("get"), QString(QLatin1Char('/') + node)}});
    }
}

void SimulatedDevice::handleFinished()
{
    readOutput();
    m_nodes = {};
    emit changed();
    // After a crash the exit code is none of the program's.
    emit failed(
        m_process.exitStatus() == QProcess::CrashExit
            ? tr("The simulated device %1 crashed or was killed. Start it again in its faults.").arg(m_name)
            : tr("The simulated device %1 ended by itself (code %2). Start it again in its faults.")
                  .arg(m_name)
                  .arg(m_process.exitCode()));
}

} // namespace devhost
