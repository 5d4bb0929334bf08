// The request channel of PlexoPlugin: queueing, sending and receiving on both sides.

#include "host/plexo_plugin.h"

#include "host/modal_box.h"

namespace {

bool isNoisyAnswer(const QString &text)
{
    for (const char *word : {"ACK BTS", "ACK BTALBUM", "ACK BTARTIST", "ACK BTSONG"}) {
        if (text.contains(QLatin1String(word)))
            return true;
    }
    return false;
}

} // namespace

void PlexoPlugin::queueVelmarAsciiMsg(QString dev_name, QByteArray bytes, bool persistentData)
{
    m_text.append(RequestChannel::Command, {dev_name, bytes});
    if (persistentData) {
        m_settingsChanged = true;
        emit updatePluginStatus(tr("Device connected - Settings have changed"), true);
    }
}

void PlexoPlugin::queueVelmarAsciiQueryMsg(QString dev_name, QByteArray bytes)
{
    m_text.append(RequestChannel::Query, {dev_name, bytes});
}

void PlexoPlugin::queueVelmarAES67Msg(QString dev_name, QByteArray bytes)
{
    m_aes67.append(RequestChannel::Command, {dev_name, bytes});
}

void PlexoPlugin::queueVelmarAES67QueryMsg(QString dev_name, QByteArray bytes)
{
    m_aes67.append(RequestChannel::Query, {dev_name, bytes});
}

void PlexoPlugin::sendVelmarAsciiMsgDirect(QString dev_name, QByteArray bytes)
{
    if (m_device)
        emit sendVelmarAsciiMsgNoWait(dev_name, m_device->type(), bytes);
}

void PlexoPlugin::processVelmarAsciiPendRequests()
{
    m_text.processNext();
}

void PlexoPlugin::processVelmarAES67PendRequests()
{
    m_aes67.processNext();
}

void PlexoPlugin::retryVelmarAsciiPendingRequest()
{
    m_text.retry();
}

void PlexoPlugin::retryVelmarAES67PendingRequest()
{
    m_aes67.retry();
}

void PlexoPlugin::clearVelmarAsciiPendingRequest()
{
    m_text.clear();
}

void PlexoPlugin::clearVelmarAES67PendingRequest()
{
    m_aes67.clear();
}

void PlexoPlugin::logMessage(const QString &heading, const QString &dev_name, const QByteArray &bytes)
{
    const QPointer<PlexoPlugin> alive(this);
    emit logData(heading);
    if (alive)
        emit logData(QStringLiteral("    %1 - %2").arg(dev_name, QString::fromUtf8(bytes)));
}

void PlexoPlugin::logRequest(const QString &dev_name, const QByteArray &bytes, RequestChannel::Kind kind)
{
    const bool isNoisy = kind == RequestChannel::Query && bytes.startsWith("BTS");
    if (!isNoisy)
        logMessage(tr("Command Request:"), dev_name, bytes);
}

void PlexoPlugin::recvVelmarAsciiMsg(QString dev_name, QByteArray bytes)
{
    if (m_device && dev_name == m_device->name())
        m_text.receive(bytes);
}

void PlexoPlugin::handleTextAnswer(const QByteArray &bytes)
{
    const QString text = QString::fromUtf8(bytes);
    if (!text.contains(QLatin1String("ACK")))
        return;
    const QPointer<PlexoPlugin> alive(this);
    if (!isNoisyAnswer(text))
        logMessage(tr("Command Response:"), getDeviceName(), bytes);
    if (alive)
        reportPresetAnswer(text);
}

void PlexoPlugin::reportPresetAnswer(const QString &text)
{
    const QPointer<PlexoPlugin> alive(this);
    const bool refused = text.contains(QLatin1String("NACK"));
    if (!refused && text.contains(QLatin1String("ACK SAVE"))) {
        m_settingsChanged = false;
        emit updateMainWindowStatus(tr("Preset saved to device."));
        if (alive)
            emit updatePluginStatus(tr("Device connected..."), false);
    } else if (!refused && text.contains(QLatin1String("ACK LOAD"))) {
        emit updateMainWindowStatus(tr("Preset loaded from device."));
    } else if (text.contains(QLatin1String("NACK LOAD"))) {
        BoxText warning;
        warning.title = getDeviceName(); // several editors may be open
        warning.text = tr("Warning:  Preset load from device.");
        warning.informativeText = tr("A preset was never stored to that location on the device.");
        runModalBox(warning, this);
        if (alive)
            emit updateMainWindowStatus(tr("Preset load from device failed...  (no preset saved)"));
    }
}

void PlexoPlugin::recvAES67Config(QString dev_name, QByteArray bytes)
{
    if (!m_device || dev_name != m_device->name() || !m_aes67.isBusy() || bytes.size() < 3)
        return;
    const QByteArray &request = m_aes67.current().bytes;
    if (!request.isEmpty() && request.at(0) == bytes.at(2))
        m_aes67.receive(bytes);
}
