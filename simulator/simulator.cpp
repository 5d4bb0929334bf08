#include "simulator/simulator.h"

#include "simulator/state_file.h"

#include <QDebug>
#include <QDir>

namespace sim {

namespace {

constexpr int ClipMs = 200;
constexpr int ClipDb = 3;

std::vector<Row> allOrders()
{
    std::vector<Row> rows = presenceOrders();
    const std::vector<Row> life = lifeOrders();
    rows.insert(rows.end(), life.begin(), life.end());
    return rows;
}

/// Position of a setting's word in its row of the table.
int choice(const Orders &orders, const char *path)
{
    const QString at = QLatin1String(path);
    return orders.tree().describe(at)->names.indexOf(orders.value(at).toString());
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
    , m_orders(allOrders(), options.faults)
    , m_presence(options, intervals,
                 {[this](const QByteArray &request) { return QVector<Answer>{{m_model.answer(request)}}; },
                  [this](quint16 port) { return m_model.identity().announcement(port); },
                  [this] { return levelPacket(); }})
    , m_fetcher(intervals, TftpFaultSettings(), options.seed)
    , m_loader(&m_fetcher, options.keepUpload)
{
    m_lifeTimer.setInterval(intervals.life);
    m_saveTimer.setInterval(intervals.save);
    m_saveTimer.setSingleShot(true);
    m_shutDownTimer.setSingleShot(true);
    m_shutDownTimer.setInterval(intervals.shutDown);
    m_clipTimer.setSingleShot(true);
    m_clipTimer.setInterval(ClipMs);
    connectModel();
    follow(QStringLiteral("/faults"), m_orders.value(QStringLiteral("/faults")));
}

Simulator::~Simulator()
{
    save();
}

void Simulator::connectModel()
{
    connect(&m_lifeTimer, &QTimer::timeout, this, &Simulator::live);
    connect(&m_saveTimer, &QTimer::timeout, this, &Simulator::save);
    connect(&m_shutDownTimer, &QTimer::timeout, this, &Simulator::reboot);
    connect(&m_clipTimer, &QTimer::timeout, this, [this] {
        m_orders.tell(QStringLiteral("/clip"), QString());
        pushLevels();
    });
    connect(&m_orders, &Orders::changed, this, &Simulator::follow);
    connect(&m_presence, &Presence::changed, this, &Simulator::handlePresence);
    // Not at once: who asked for it takes leave first, and waits for the answer.
    connect(&m_model, &DeviceModel::rebootRequested, &m_shutDownTimer, qOverload<>(&QTimer::start));
    connect(&m_model, &DeviceModel::meteringRequested, this, [this](bool on) {
        on ? m_presence.streamLevels(m_intervals.meterFor) : m_presence.stopLevels();
    });
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
        problem = m_presence.open();
    if (!problem.isEmpty())
        return problem;
    m_lived.start();
    m_lifeTimer.start();
    m_presence.appear();
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

void Simulator::live()
{
    m_model.advance(int(m_lived.restart()));
}

void Simulator::follow(const QString &path, const QJsonValue &order)
{
    const QJsonObject faults = m_orders.value(QStringLiteral("/faults")).toObject();
    const FaultSettings settings = faultSettings(faults);
    m_presence.applyOrder(path, order, settings);
    m_model.setRefusePattern(settings.refuse);
    m_fetcher.setFaults(tftpFaultSettings(faults));
    m_model.setPhoneRange(PhoneRange(choice(m_orders, "/phone")));
    m_model.setUsbPlug(UsbHost::Plug(choice(m_orders, "/usb")));
    if (path == QLatin1String("/clip"))
        m_clipTimer.start();
    pushLevels();
}

void Simulator::pushLevels()
{
    ParameterTree levels = m_orders.tree();
    const QString clipped = levels.value(QStringLiteral("/clip")).toString();
    if (!clipped.isEmpty())
        levels.put(QStringLiteral("/levels/") + clipped, ClipDb);
    m_model.setPushedLevels(levels.value(QStringLiteral("/levels")).toObject());
}

void Simulator::handlePresence(bool here)
{
    m_orders.tell(QStringLiteral("/present"), here);
    if (here)
        return;
    m_shutDownTimer.stop();
    m_fetcher.abort();
    m_model.abandonLoad();
}

/// The fetch begins once the request that ordered it has its reply.
void Simulator::startFetch(const TftpUri &source)
{
    QTimer::singleShot(0, &m_fetcher, [this, source] {
        if (m_presence.isHere()) // it may have vanished with that reply
            m_fetcher.fetch(source, m_options.address);
    });
}

void Simulator::reboot()
{
    qInfo() << "reboot";
    m_presence.vanish();
    m_model.powerUp();
    m_presence.returnIn(m_intervals.reboot);
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
