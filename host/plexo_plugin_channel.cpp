// The request channel of PlexoPlugin: queueing, sending and receiving on both sides.

#include "host/plexo_plugin.h"

#include "host/modal_box.h"

#include <QTimer>

namespace {

// Gives the requests that one user action queues the chance to arrive together.
constexpr int StartDelayMs = 5;

bool isNoisyAnswer(const QString &text)
{
    for (const char *word : {"ACK BTS", "ACK BTALBUM", "ACK BTARTIST", "ACK BTSONG"}) {
        if (text.contains(QLatin1String(word)))
            return true;
    }
    return false;
}

bool isNoisyQuery(const RequestSide &side)
{
    return side.currentIsQuery() && side.current().bytes.startsWith("BTS");
}

} // namespace

void PlexoPlugin::startLater(Operation process)
{
    QTimer::singleShot(StartDelayMs, this, process);
}

void PlexoPlugin::queueVelmarAsciiMsg(QString dev_name, QByteArray bytes, bool persistentData)
{
    const bool start = m_text.appendCommand({dev_name, bytes});
    if (start)
        startLater(&PlexoPlugin::processVelmarAsciiPendRequests);
    if (persistentData) {
        m_settingsChanged = true;
        emit updatePluginStatus(QStringLiteral("Device connected - Settings have changed"), true);
    }
}

void PlexoPlugin::queueVelmarAsciiQueryMsg(QString dev_name, QByteArray bytes)
{
    if (m_text.appendQuery({dev_name, bytes}))
        startLater(&PlexoPlugin::processVelmarAsciiPendRequests);
}

void PlexoPlugin::queueVelmarAES67Msg(QString dev_name, QByteArray bytes)
{
    if (m_aes67.appendCommand({dev_name, bytes}))
        startLater(&PlexoPlugin::processVelmarAES67PendRequests);
}

void PlexoPlugin::queueVelmarAES67QueryMsg(QString dev_name, QByteArray bytes)
{
    if (m_aes67.appendQuery({dev_name, bytes}))
        startLater(&PlexoPlugin::processVelmarAES67PendRequests);
}

void PlexoPlugin::sendVelmarAsciiMsgDirect(QString dev_name, QByteArray bytes)
{
    if (m_device)
        emit sendVelmarAsciiMsgNoWait(dev_name, m_device->type(), bytes);
}

/// Makes the next request current, commands before queries. Answers whether there is one to send.
bool PlexoPlugin::takeNextRequest(RequestSide &side)
{
    if (side.hasCommands()) {
        side.takeCommand();
        return true;
    }
    const QPointer<PlexoPlugin> alive(this);
    emit updateGuiData();
    // A slot of that signal may have destroyed the plugin or started a request itself.
    if (!alive || side.busy || !side.hasQueries())
        return false;
    side.takeQuery();
    return true;
}

/// Requests that find no device are dropped one by one, so that the channel is usable as soon as a device is
/// attached.
void PlexoPlugin::dropCurrent(const RequestSide &side, Operation process)
{
    const QPointer<PlexoPlugin> alive(this);
    logMessage(QStringLiteral("Command dropped, no device is attached:"), side.current());
    if (alive)
        startLater(process);
}

void PlexoPlugin::sendCurrent(RequestSide &side, SendSignal send)
{
    const PendingRequest request = side.current();
    // Before the signal: a host that answers from within it completes this request.
    side.markSent(m_replyTimeoutMs);
    emit(this->*send)(request.dev_name, m_device->type(), request.bytes);
}

void PlexoPlugin::processVelmarAsciiPendRequests()
{
    if (m_text.busy || !takeNextRequest(m_text))
        return;
    if (!m_device) {
        dropCurrent(m_text, &PlexoPlugin::processVelmarAsciiPendRequests);
        return;
    }
    const QPointer<PlexoPlugin> alive(this);
    const PendingRequest request = m_text.current();
    const bool logged = !isNoisyQuery(m_text);
    sendCurrent(m_text, &PlexoPlugin::sendVelmarAsciiMsg);
    if (alive && logged)
        logMessage(QStringLiteral("Command Request:"), request);
}

void PlexoPlugin::processVelmarAES67PendRequests()
{
    if (m_aes67.busy || !takeNextRequest(m_aes67))
        return;
    if (m_device)
        sendCurrent(m_aes67, &PlexoPlugin::sendVelmarAES67Msg);
    else
        dropCurrent(m_aes67, &PlexoPlugin::processVelmarAES67PendRequests);
}

void PlexoPlugin::retryVelmarAsciiPendingRequest()
{
    if (m_device)
        sendCurrent(m_text, &PlexoPlugin::sendVelmarAsciiMsg);
}

void PlexoPlugin::retryVelmarAES67PendingRequest()
{
    if (m_device)
        sendCurrent(m_aes67, &PlexoPlugin::sendVelmarAES67Msg);
}

void PlexoPlugin::clearVelmarAsciiPendingRequest()
{
    m_text.clear();
}

void PlexoPlugin::clearVelmarAES67PendingRequest()
{
    m_aes67.clear();
}

/// Takes the message by value: a slot of the first line may make another request the current one.
void PlexoPlugin::logMessage(const QString &heading, PendingRequest message)
{
    const QPointer<PlexoPlugin> alive(this);
    emit logData(heading);
    if (alive)
        emit logData(QStringLiteral("    %1 - %2").arg(message.dev_name, QString::fromUtf8(message.bytes)));
}

void PlexoPlugin::recvVelmarAsciiMsg(QString dev_name, QByteArray bytes)
{
    if (!m_device || dev_name != m_device->name())
        return;
    const QPointer<PlexoPlugin> alive(this);
    m_text.timer()->stop();
    const int turn = m_text.turn();
    handleTextAnswer(dev_name, bytes);
    // A box in there lets in further answers, one of which may have ended this request, or another device.
    if (!alive || m_text.turn() != turn)
        return;
    m_text.busy = false;
    processVelmarAsciiPendRequests();
}

void PlexoPlugin::handleTextAnswer(const QString &dev_name, const QByteArray &bytes)
{
    const QString text = QString::fromUtf8(bytes);
    if (!text.contains(QLatin1String("ACK")))
        return;
    const QPointer<PlexoPlugin> alive(this);
    if (!isNoisyAnswer(text))
        logMessage(QStringLiteral("Command Response:"), {dev_name, bytes});
    if (alive)
        reportPresetAnswer(text);
}

void PlexoPlugin::reportPresetAnswer(const QString &text)
{
    const QPointer<PlexoPlugin> alive(this);
    const bool refused = text.contains(QLatin1String("NACK"));
    if (!refused && text.contains(QLatin1String("ACK SAVE"))) {
        m_settingsChanged = false;
        emit updateMainWindowStatus(QStringLiteral("Preset saved to device."));
        if (alive)
            emit updatePluginStatus(QStringLiteral("Device connected..."), false);
    } else if (!refused && text.contains(QLatin1String("ACK LOAD"))) {
        emit updateMainWindowStatus(QStringLiteral("Preset loaded from device."));
    } else if (text.contains(QLatin1String("NACK LOAD"))) {
        BoxText warning;
        warning.title = getDeviceName(); // several editors may be open
        warning.text = QStringLiteral("Warning:  Preset load from device.");
        warning.informativeText = QStringLiteral("A preset was never stored to that location on the device.");
        runModalBox(warning, this);
        if (alive)
            emit updateMainWindowStatus(
                QStringLiteral("Preset load from device failed...  (no preset saved)"));
    }
}

void PlexoPlugin::recvAES67Config(QString dev_name, QByteArray bytes)
{
    if (!m_device || dev_name != m_device->name() || !m_aes67.busy || bytes.size() < 3)
        return;
    const QByteArray &request = m_aes67.current().bytes;
    if (request.isEmpty() || request.at(0) != bytes.at(2))
        return;
    m_aes67.timer()->stop();
    m_aes67.busy = false;
    processVelmarAES67PendRequests();
}
