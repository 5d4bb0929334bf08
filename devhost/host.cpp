#include "devhost/host.h"

#include "devhost/known_device.h"
#include "devhost/options.h"
#include "devhost/session_watch.h"
#include "devhost/snapshot_report.h"

#include <QCoreApplication>
#include <QDir>

namespace devhost {

namespace {

constexpr int MostLogLines = 20000;
constexpr qint64 MostLogBytes = 32 * 1024 * 1024;

QString besideProgram(const QString &name)
{
    return QDir(QCoreApplication::applicationDirPath()).filePath(name);
}

} // namespace

Host::Host(QObject *parent)
    : QObject(parent)
    , m_log(MostLogLines, MostLogBytes)
    , m_finder(&m_devices)
    , m_simulated(besideProgram(QStringLiteral("kbx-simulator")))
    , m_sessions(&m_registry, {&m_devices, &m_text, &m_aes67, nullptr, 0})
{
    wireSimulated();
    for (DeviceTransport *transport : transports())
        connect(transport, &DeviceTransport::problem, this,
                [this](const QString &name, const QString &text) { reportProblem(text, name); });
    wireText(&m_text, &m_requests, false);
    wireText(&m_byHand, &m_requestsByHand, true);
    wireBinary(&m_aes67);
    for (const DeviceTransport *transport : {&m_text, &m_byHand})
        m_recorder.follow(transport);
    connect(&m_recorder, &SessionRecorder::problem, this,
            [this](const QString &text) { reportProblem(text); });
    connect(&m_finder, &DeviceFinder::forgotten, &m_refusals,
            [this](const KnownDevice *device) { m_refusals.clear(device->name()); });
    connect(&m_refusals, &Refusals::refused, this,
            [this](const QString &name, const QString &sentence) { reportProblem(sentence, name); });
    connect(&m_finder, &DeviceFinder::found, this, &Host::wireDevice);
    connect(&m_finder, &DeviceFinder::problem, this, [this](const QString &text) { reportProblem(text); });
    connect(&m_sessions, &EditorSessions::closed, this,
            [this](const QString &name) { reportStatus(tr("The editor of %1 is closed.").arg(name), name); });
    connect(&m_sessions, &EditorSessions::starting, this, &Host::wireSession);
}

bool Host::isSimulated(const KnownDevice &device) const
{
    return device.ipAddress().isLoopback() && m_simulated.device(device.name());
}

void Host::start(const Options &options, const QNetworkInterface &interface)
{
    for (DeviceTransport *transport : transports())
        reportProblem(transport->open());
    QStringList plugins = options.plugins;
    if (plugins.isEmpty())
        plugins.append(besideProgram(QStringLiteral("tarnkbx_plugin")));
    for (const QString &file : qAsConst(plugins))
        reportProblem(m_registry.load(file));
    useInterface(interface);
    m_simulated.start(options.simulate);
}

void Host::useInterface(const QNetworkInterface &interface)
{
    m_interface = interface;
    reportProblem(m_finder.listenOn(interface));
    m_recorder.setInterface(interface);
    m_sessions.setInterfaceIndex(interface.index());
    emit interfaceChanged();
}

qint64 Host::sendByHand(const QString &deviceName, const QByteArray &message)
{
    return m_byHand.send(deviceName, message) ? m_log.newest() : -1;
}

void Host::reportProblem(const QString &sentence, const QString &deviceName)
{
    if (sentence.isEmpty())
        return;
    m_log.append(LogSource::Problem, deviceName, sentence);
    emit problem(sentence);
}

void Host::reportStatus(const QString &text, const QString &deviceName)
{
    m_log.append(LogSource::Host, deviceName, text);
    emit status(text);
}

void Host::wireSimulated()
{
    connect(&m_simulated, &SimulatedDevices::said, this, [this](const QString &name, const QString &line) {
        m_log.append(LogSource::Host, name, tr("Simulator: %1").arg(line));
    });
    connect(&m_simulated, &SimulatedDevices::failed, this,
            [this](const QString &name, const QString &sentence) { reportProblem(sentence, name); });
}

void Host::wireText(DeviceTransport *transport, RequestWatch *requests, bool isByHand)
{
    connect(transport, &DeviceTransport::sent, this,
            [this, transport, requests, isByHand](const QString &name, const QByteArray &bytes) {
                LogEntry entry = requestEntry(name, bytes);
                entry.isByHand = isByHand;
                const qint64 token = m_log.append(entry);
                requests->noteSent(name, bytes, token, transport->sinceSendingNs());
            });
    connect(transport, &DeviceTransport::received, this,
            [this, transport, requests](const QString &name, const QByteArray &bytes) {
                const RequestWatch::Answer answer
                    = requests->noteReceived(name, bytes, transport->sinceArrivalNs());
                if (!m_log.answer(answer.token, bytes, answer))
                    m_log.append(replyEntry(name, bytes, answer));
            });
    connect(requests, &RequestWatch::lost, &m_log, &CommunicationLog::markLost);
    connect(&m_finder, &DeviceFinder::forgotten, requests,
            [requests](const KnownDevice *device) { requests->forget(device->name()); });
}

void Host::wireBinary(DeviceTransport *transport)
{
    connect(transport, &DeviceTransport::sent, &m_log, [this](const QString &name, const QByteArray &bytes) {
        m_log.append(binaryEntry(LogSource::Sent, name, bytes));
    });
    connect(transport, &DeviceTransport::received, &m_log,
            [this](const QString &name, const QByteArray &bytes) {
                m_log.append(binaryEntry(LogSource::Received, name, bytes));
            });
}

void Host::wireDevice(KnownDevice *device)
{
    const auto route = [this, device] {
        for (DeviceTransport *transport : transports())
            transport->setRoute(device->name(), device->ipAddress(), device->controlPort());
    };
    route();
    connect(device, &KnownDevice::routeChanged, this, route);
    connect(device, &pxDevice::PresenceChanged, this, [this, device] {
        // Another device may be given its address.
        if (!device->isPresent())
            dropRoute(device);
        reportStatus(device->isPresent() ? tr("%1 is back.").arg(device->name())
                                         : tr("%1 is lost: it no longer announces itself on %2.")
                                               .arg(device->name(), m_interface.humanReadableName()),
                     device->name());
    });
    reportStatus(tr("Found %1 at %2.").arg(device->name(), device->ipAddress().toString()), device->name());
}

void Host::dropRoute(const KnownDevice *device)
{
    for (DeviceTransport *transport : transports())
        transport->removeRoute(device->name());
}

void Host::watchSession(EditorSession *session)
{
    const QString name = session->deviceName();
    auto *watch = new SessionWatch(session, &m_requests);
    connect(watch, &SessionWatch::stuck, this, [this, name](const QString &sentence) {
        reportProblem(sentence, name);
        emit sessionNotice(name, sentence);
    });
    connect(watch, &SessionWatch::recovered, this, [this, name] {
        reportStatus(tr("The editor of %1 has read the device now.").arg(name), name);
        emit sessionNotice(name, QString());
    });
    connect(session, &EditorSession::applyingSnapshot, this,
            [this, session, name](const QByteArray &snapshot) {
                auto *report = new SnapshotReport(session, &m_requests, snapshot);
                connect(report, &SnapshotReport::finished, this,
                        [this, name](const QString &sentence, bool isProblem) {
                            isProblem ? reportProblem(sentence, name) : reportStatus(sentence, name);
                            emit sessionNotice(name, isProblem ? sentence : QString());
                        });
            });
}

void Host::wireSession(EditorSession *session)
{
    const QString name = session->deviceName();
    watchSession(session);
    connect(session, &EditorSession::logged, this,
            [this, name](const QString &line) { m_log.append(LogSource::Plugin, name, line); });
    connect(session, &EditorSession::hostStatus, this,
            [this, name](const QString &text) { reportStatus(text, name); });
    connect(session, &EditorSession::replyOverdue, this, [this, session, name] {
        // The editor of a lost device asks nothing, and the loss is told.
        if (session->device()->isPresent())
            reportProblem(tr("%1 did not answer in time. Answer the question of its editor.").arg(name),
                          name);
    });
    connect(session, &EditorSession::presetLoadFinished, this, [this, name](bool success) {
        if (success)
            reportStatus(tr("The snapshot was sent to %1.").arg(name), name);
        else
            reportProblem(tr("The snapshot was not applied to %1.").arg(name), name);
    });
}

} // namespace devhost
