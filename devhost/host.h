#pragma once

#include "devhost/communication_log.h"
#include "devhost/device_finder.h"
#include "devhost/device_transport.h"
#include "devhost/editor_sessions.h"
#include "devhost/plugin_registry.h"
#include "devhost/refusals.h"
#include "devhost/request_watch.h"
#include "devhost/session_recorder.h"
#include "devhost/simulated_devices.h"
#include "host/px_devices.h"

#include <QNetworkInterface>
#include <QObject>

#include <array>

namespace devhost {

struct Options;

/// The host without its window: finds devices, carries their traffic, keeps plugins, editors and the log,
/// and wires these to each other.
class Host : public QObject
{
    Q_OBJECT

public:
    explicit Host(QObject *parent = nullptr);

    /// Loads plugins, opens the network and starts what @p options ask for. What fails is told by problem().
    void start(const Options &options, const QNetworkInterface &interface);
    /// Looks for devices on @p interface from now on and tells the open editors.
    void useInterface(const QNetworkInterface &interface);

    /// Whether this host started the device itself.
    bool isSimulated(const KnownDevice &device) const;

    QNetworkInterface interface() const { return m_interface; }
    DeviceFinder *finder() { return &m_finder; }
    DeviceTransport *transport() { return &m_text; }
    /// How devices answer what editors send them.
    RequestWatch *requests() { return &m_requests; }
    /// What they refused to change.
    Refusals *refusals() { return &m_refusals; }
    PluginRegistry *registry() { return &m_registry; }
    EditorSessions *sessions() { return &m_sessions; }
    SimulatedDevices *simulated() { return &m_simulated; }
    CommunicationLog *log() { return &m_log; }
    SessionRecorder *recorder() { return &m_recorder; }

    /// Sends a message of the user's own, past the editors' channels, and awaits its reply apart from theirs.
    /// The answer is its number in the log; negative when it was not sent, which problem() tells.
    qint64 sendByHand(const QString &deviceName, const QByteArray &message);

    /// Logs @p sentence and tells the window; an empty one is no problem.
    void reportProblem(const QString &sentence, const QString &deviceName = QString());
    void reportStatus(const QString &text, const QString &deviceName = QString());

signals:
    /// A sentence for the user; already in the log.
    void problem(const QString &sentence);
    /// A status text of a plugin or of the host; already in the log.
    void status(const QString &text);
    void interfaceChanged();
    /// How the editor of a device gets on, for as long as it lasts; empty when all is well.
    void sessionNotice(const QString &deviceName, const QString &sentence);

private:
    std::array<DeviceTransport *, 3> transports() { return {&m_text, &m_aes67, &m_byHand}; }
    void wireSimulated();
    /// Logs what the transport carries, paired by @p requests.
    void wireText(DeviceTransport *transport, RequestWatch *requests, bool isByHand);
    void wireBinary(DeviceTransport *transport);
    void wireDevice(KnownDevice *device);
    void dropRoute(const KnownDevice *device);
    void wireSession(EditorSession *session);
    void watchSession(EditorSession *session);

    CommunicationLog m_log;
    pxDevices m_devices;
    DeviceFinder m_finder;
    DeviceTransport m_text;
    DeviceTransport m_aes67;
    DeviceTransport m_byHand;
    SessionRecorder m_recorder{&m_finder};
    RequestWatch m_requests;
    Refusals m_refusals{&m_requests};
    RequestWatch m_requestsByHand;
    PluginRegistry m_registry;
    SimulatedDevices m_simulated;
    QNetworkInterface m_interface;
    // Last, so that it goes first: editors use all of the above to their end.
    EditorSessions m_sessions;
};

} // namespace devhost
