#include "simulator/simulator.h"

#include "simulator/state_file.h"

#include <QDebug>
#include <QDir>

#include <algorithm>

namespace sim {

namespace {

/// The loopback interface, whose name is another one on every system, when @p name is empty.
QNetworkInterface interfaceFor(const QString &name)
{
    const QList<QNetworkInterface> all = QNetworkInterface::allInterfaces();
    const auto found = std::find_if(all.cbegin(), all.cend(), [&name](const QNetworkInterface &candidate) {
        return name.isEmpty() ? bool(candidate.flags() & QNetworkInterface::IsLoopBack)
                              : candidate.name() == name;
    });
    return found == all.cend() ? QNetworkInterface() : *found;
}

QString about(const QString &file, const QString &problem)
{
    return QStringLiteral("%1: %2").arg(QDir::toNativeSeparators(file), problem);
}

} // namespace

Simulator::Simulator(const Options &options, const Intervals &intervals, QObject *parent)
    : QObject(parent)
    , m_options(options)
    , m_intervals(intervals)
    , m_model(Identity(options.name, options.address), options.seed)
    , m_control(options.faults, options.seed, intervals.hold,
                [this](const QByteArray &request) { return m_model.answer(request); })
    , m_announcements(intervals.announce, [this] { return announcement(); })
    , m_meters(intervals.meter, [this] { return levelPacket(); })
    , m_fetcher(intervals, options.tftpFaults, options.seed)
    , m_loader(&m_fetcher, options.keepUpload)
{
    m_model.setRefusePattern(options.faults.refuse);
    m_lifeTimer.setInterval(intervals.life);
    m_saveTimer.setInterval(intervals.save);
    m_saveTimer.setSingleShot(true);
    m_returnTimer.setSingleShot(true);
    m_shutDownTimer.setSingleShot(true);
    m_shutDownTimer.setInterval(intervals.shutDown);
    connectModel();
}

Simulator::~Simulator()
{
    save();
}

void Simulator::connectModel()
{
    connect(&m_lifeTimer, &QTimer::timeout, this, &Simulator::live);
    connect(&m_saveTimer, &QTimer::timeout, this, &Simulator::save);
    connect(&m_returnTimer, &QTimer::timeout, this, &Simulator::appear);
    connect(&m_shutDownTimer, &QTimer::timeout, this, &Simulator::reboot);
    connect(&m_control, &ControlService::answered, this, &Simulator::vanishWhenDue);
    // Not at once: who asked for it takes leave first, and waits for the answer.
    connect(&m_model, &DeviceModel::rebootRequested, &m_shutDownTimer, qOverload<>(&QTimer::start));
    connect(&m_model, &DeviceModel::meteringRequested, this,
            [this](bool on) { on ? m_meters.start(m_intervals.meterFor) : m_meters.stop(); });
    connect(&m_model, &DeviceModel::fetchRequested, this, &Simulator::startFetch);
    connect(&m_loader, &CueLoader::loaded, &m_model, &DeviceModel::finishLoad);
    connect(&m_loader, &CueLoader::rejected, &m_model, &DeviceModel::abandonLoad);
    if (!m_options.stateFile.isEmpty())
        connect(&m_model, &DeviceModel::settingsChanged, &m_saveTimer, qOverload<>(&QTimer::start));
}

QString Simulator::start()
{
    QString problem = restore();
    if (problem.isEmpty())
        problem = openSockets();
    if (!problem.isEmpty())
        return problem;
    m_lived.start();
    m_lifeTimer.start();
    appear();
    return {};
}

QString Simulator::restore()
{
    if (m_options.stateFile.isEmpty())
        return {};
    const StateRead read = readState(m_options.stateFile);
    if (!read.error.isEmpty())
        return about(m_options.stateFile, read.error);
    if (read.state.isEmpty())
        return {};
    const QString misfit = m_model.fromJson(read.state);
    return misfit.isEmpty() ? QString() : about(m_options.stateFile, misfit);
}

QString Simulator::openSockets()
{
    const Station station{m_options.address, interfaceFor(m_options.interface)};
    if (!station.interface.isValid())
        return m_options.interface.isEmpty()
            ? QStringLiteral("there is no loopback interface; name another one with --interface")
            : QStringLiteral("there is no network interface \"%1\"").arg(m_options.interface);
    if (!m_control.listen(station.address, m_options.port))
        return QStringLiteral("cannot listen on %1:%2: %3")
            .arg(station.address.toString())
            .arg(m_options.port)
            .arg(m_control.errorText());
    if (!m_announcements.open(station) || !m_meters.open(station))
        return QStringLiteral("cannot send from %1: %2")
            .arg(station.address.toString(), m_announcements.errorText());
    return {};
}

void Simulator::live()
{
    m_model.advance(int(m_lived.restart()));
}

void Simulator::appear()
{
    m_control.setSilent(false);
    m_announcements.sendNow();
    m_announcements.start();
}

void Simulator::disappear()
{
    m_control.setSilent(true);
    m_announcements.stop();
    m_meters.stop();
    m_fetcher.abort();
    m_model.abandonLoad();
}

/// The fetch begins once the request that ordered it has its reply.
void Simulator::startFetch(const TftpUri &source)
{
    QTimer::singleShot(0, &m_fetcher, [this, source] {
        if (!m_control.isSilent()) // it may have vanished with that reply
            m_fetcher.fetch(source, m_options.address);
    });
}

void Simulator::reboot()
{
    qInfo() << "reboot";
    disappear();
    m_model.powerUp();
    m_returnTimer.start(m_intervals.reboot);
}

void Simulator::vanishWhenDue(int answered)
{
    if (answered != m_options.faults.vanishAfter)
        return;
    qInfo() << "vanishing after" << answered << "requests";
    disappear();
    m_shutDownTimer.stop();
    m_returnTimer.stop(); // a restart under way does not end this
    if (m_options.faults.returnAfterMs > 0)
        m_returnTimer.start(m_options.faults.returnAfterMs);
}

Packet Simulator::announcement() const
{
    return {m_model.identity().announcement(m_control.port()), QHostAddress(QStringLiteral("239.255.77.1")),
            47700};
}

Packet Simulator::levelPacket() const
{
    const QJsonObject target = m_model.tree().value(QStringLiteral("/system/metering")).toObject();
    return {levelDatagram(m_model.levels()), QHostAddress(target.value(QStringLiteral("ip")).toString()),
            quint16(target.value(QStringLiteral("port")).toInt())};
}

void Simulator::save()
{
    m_saveTimer.stop();
    const bool started = m_lifeTimer.isActive(); // before that the file has not been read
    if (m_options.stateFile.isEmpty() || !started)
        return;
    const QString problem = writeState(m_options.stateFile, m_model.toJson());
    if (!problem.isEmpty())
        qWarning().noquote() << about(m_options.stateFile, problem);
}

} // namespace sim
