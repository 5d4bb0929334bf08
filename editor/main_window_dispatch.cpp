// Where every reply of the device goes.

#include "editor/tarnkbx_main_window.h"

#include "protocol/derived_state_machine.h"
#include "protocol/paths.h"

#include "ui_main_window.h"

#include <QJsonDocument>

#include <utility>

namespace {

/// The JSON part of a reply; a binary payload may follow it behind a zero byte.
QJsonObject parse(const QByteArray &bytes)
{
    const int end = bytes.indexOf('\0');
    const bool isBinary = end >= 0 && (bytes.contains("get_bin") || bytes.contains("set_bin"));
    return QJsonDocument::fromJson(isBinary ? bytes.left(end) : bytes).object();
}

} // namespace

void TarnKBX_MainWindow::handleAsciiReply(QString dev_name, QByteArray bytes)
{
    if (dev_name != deviceName())
        return;
    const bool ofPoll = std::exchange(m_awaitingPollReply, false);
    const QJsonObject reply = parse(bytes);
    if (json::text(reply, "result") != QLatin1String("OK"))
        return;
    const QJsonValue cmd = reply.value(QLatin1String("cmd"));
    const QJsonValue param = reply.value(QLatin1String("param"));
    if (!cmd.isString() || !param.isString())
        return;
    const QPointer<TarnKBX_MainWindow> alive(this);
    const QString kind = cmd.toString();
    if (kind == QLatin1String("get"))
        handleGetReply(param.toString(), reply);
    else if (kind == QLatin1String("set"))
        handleSetReply(param.toString(), reply);
    else
        handleBinaryReply(kind, param.toString(), bytes);
    if (alive && !ofPoll && (kind == QLatin1String("get") || kind == QLatin1String("get_bin")))
        advanceQuery();
}

void TarnKBX_MainWindow::handleGetReply(const QString &param, const QJsonObject &reply)
{
    const QPointer<TarnKBX_MainWindow> alive(this);
    if (const ReplyHandler handler = m_getHandlers.value(param))
        handler(*this, reply);
    if (alive && m_queryFinished) {
        if (param.contains(QLatin1String("/status")))
            statusRefresh();
        else
            emit dataChanged();
    }
}

void TarnKBX_MainWindow::handleSetReply(const QString &param, const QJsonObject &reply)
{
    const QPointer<TarnKBX_MainWindow> alive(this);
    if (const auto notice = m_setNotices.value(param))
        notice(this);
    if (!alive)
        return;
    if (const ReplyHandler handler = m_setHandlers.value(param))
        handler(*this, reply);
    // The last row of a snapshot has been taken over.
    if (alive && param.contains(path::LastMixerRow))
        ui->plugin_frame->setEnabled(true);
}

void TarnKBX_MainWindow::handleBinaryReply(const QString &cmd, const QString &param, const QByteArray &bytes)
{
    const QPointer<TarnKBX_MainWindow> alive(this);
    if (cmd == QLatin1String("get_bin")) {
        if (const auto handler = m_binaryGetHandlers.value(param))
            handler(this, bytes);
        if (alive && m_queryFinished)
            emit dataChanged();
    } else if (cmd == QLatin1String("set_bin")) {
        if (const auto handler = m_binarySetHandlers.value(param))
            handler(this, bytes);
    }
}

void TarnKBX_MainWindow::advanceQuery()
{
    if (m_query)
        emit m_query->nextState();
}

void TarnKBX_MainWindow::onDataChanged()
{
    if (!m_queryFinished)
        return;
    statusRefresh();
    settingsRefresh();
}

void TarnKBX_MainWindow::statusRefresh()
{
    showUsbStatus();
    showBluetoothStatus();
    showVoiceCueStatus();
}

void TarnKBX_MainWindow::settingsRefresh()
{
    showUsbSettings();
    showBluetoothSettings();
    showVoiceCueSettings();
    showNetworkSettings();
    showNotificationSettings();
    showMeteringSettings();
}
