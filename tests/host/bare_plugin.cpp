#include "tests/host/bare_plugin.h"

#include <QTest>

BarePlugin::BarePlugin()
{
    const auto note = [this](const char *what, auto signal) {
        connect(this, signal, this, [=] { told += what + QByteArray(";"); });
    };
    const auto noteBytes = [this](const char *what, auto signal) {
        connect(this, signal, this, [=](const QString &name, pxDevice::e_dev_type, const QByteArray &bytes) {
            told += what + QByteArray(" ") + name.toLatin1() + ' ' + bytes + ';';
            ++sent;
        });
    };
    noteBytes("send", &PlexoPlugin::sendVelmarAsciiMsg);
    noteBytes("direct", &PlexoPlugin::sendVelmarAsciiMsgNoWait);
    noteBytes("aes", &PlexoPlugin::sendVelmarAES67Msg);
    note("changed", &PlexoPlugin::deviceChanged);
    note("available", &PlexoPlugin::deviceAvailabilityChanged);
    note("gui", &PlexoPlugin::updateGuiData);
    note("timeout", &PlexoPlugin::sendVelmarAsciiMsgTimeout);
    note("view", &PlexoPlugin::switchToDeviceView);
    note("close", &PlexoPlugin::pluginRequestClose);
    connect(this, &PlexoPlugin::logData, this,
            [this](const QString &line) { logged += line.toUtf8() + ';'; });
    connect(this, &PlexoPlugin::updateMainWindowStatus, this,
            [this](const QString &text) { told += text.toUtf8() + ';'; });
    connect(this, &PlexoPlugin::updatePluginStatus, this, [this](const QString &text, bool highlighted) {
        told += (highlighted ? text.toUpper() : text).toUtf8() + ';';
    });
}

HostSide::HostSide()
    : plugin(new BarePlugin)
{
    device.setName(QStringLiteral("KBX"));
    device.setType(pxDevice::DEV_TYPE_NETWORK);
    device.setPresent(true);
}

void HostSide::run(const QByteArray &script)
{
    int sentBefore = plugin->sent;
    for (const QByteArray &line : script.split(';')) {
        const QByteArray verb = line.split(' ').constFirst();
        if (verb == "await")
            QTRY_VERIFY(!plugin || plugin->sent > sentBefore);
        else
            call(verb, line.mid(verb.size() + 1));
        if (!plugin)
            return;
        sentBefore = plugin->sent;
    }
}

void HostSide::call(const QByteArray &verb, const QByteArray &argument)
{
    const QString name = device.name();
    const QHash<QByteArray, std::function<void()>> verbs{
        {"attach", [=] { plugin->setDevice(&device); }},
        {"attach-only", [=] { plugin->setDeviceNoConnect(&device); }},
        {"lost", [=] { device.setPresent(false); }},
        {"command", [=] { plugin->queueVelmarAsciiMsg(name, argument, false); }},
        {"stored", [=] { plugin->queueVelmarAsciiMsg(name, argument, true); }},
        {"query", [=] { plugin->queueVelmarAsciiQueryMsg(name, argument); }},
        {"direct", [=] { plugin->sendVelmarAsciiMsgDirect(name, argument); }},
        {"answer", [=] { plugin->recvVelmarAsciiMsg(name, argument); }},
        {"from", [=] { plugin->recvVelmarAsciiMsg(QLatin1String(argument), "{}"); }},
        {"process", [=] { plugin->processVelmarAsciiPendRequests(); }},
        {"clear", [=] { plugin->clearVelmarAsciiPendingRequest(); }},
        {"timeout", [=] { plugin->handleVelmarAsciiRequestTimeout(); }},
        {"save", [=] { plugin->savePreset(argument.toInt()); }},
        {"load", [=] { plugin->loadPreset(argument.toInt()); }},
        {"unmark", [=] { plugin->setSettingsChanged(false); }},
        {"aes-command", [=] { plugin->queueVelmarAES67Msg(name, argument); }},
        {"aes-query", [=] { plugin->queueVelmarAES67QueryMsg(name, argument); }},
        {"aes-answer", [=] { plugin->recvAES67Config(name, argument); }},
        {"aes-from", [=] { plugin->recvAES67Config(QLatin1String(argument), "..A"); }},
        {"aes-timeout", [=] { plugin->handleVelmarAES67RequestTimeout(); }},
        {"forget", [=] { plugin->told.clear(), plugin->logged.clear(); }},
    };
    QVERIFY2(verbs.contains(verb), verb.constData());
    verbs.value(verb)();
}
