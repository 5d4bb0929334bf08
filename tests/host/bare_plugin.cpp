#include "tests/host/bare_plugin.h"

#include <QTest>

BarePlugin::BarePlugin()
{
    const auto note = [this](const char *what, auto signal) {
        connect(this, signal, this, [=] { told.append(QLatin1String(what)); });
    };
    const auto noteBytes = [this](const char *what, auto signal) {
        connect(this, signal, this, [=](const QString &name, pxDevice::e_dev_type, const QByteArray &bytes) {
            told.append(QStringLiteral("%1 %2 %3").arg(QLatin1String(what), name, QLatin1String(bytes)));
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
    connect(this, &PlexoPlugin::logData, this, [this](const QString &line) { logged.append(line); });
    connect(this, &PlexoPlugin::updateMainWindowStatus, this,
            [this](const QString &text) { told.append(text); });
    connect(this, &PlexoPlugin::updatePluginStatus, this, [this](const QString &text, bool highlighted) {
        told.append(highlighted ? text.toUpper() : text);
    });
}

HostSide::HostSide()
    : plugin(new BarePlugin)
{
    device.setName(QStringLiteral("KBX"));
    device.setType(pxDevice::DEV_TYPE_NETWORK);
    device.setPresent(true);
}

void HostSide::run(const QString &script)
{
    int sentBefore = plugin->sent;
    for (const QString &line : script.split(QLatin1Char(';'))) {
        const QString verb = line.section(QLatin1Char(' '), 0, 0);
        if (verb == QLatin1String("await"))
            QTRY_VERIFY(!plugin || plugin->sent > sentBefore);
        else
            call(verb, line.mid(verb.size() + 1).toLatin1());
        if (!plugin)
            return;
        sentBefore = plugin->sent;
    }
}

void HostSide::call(const QString &verb, const QByteArray &argument)
{
    const QString name = device.name();
    const QHash<QString, std::function<void()>> verbs{
        {QStringLiteral("attach"), [=] { plugin->setDevice(&device); }},
        {QStringLiteral("attach-only"), [=] { plugin->setDeviceNoConnect(&device); }},
        {QStringLiteral("devices"), [=] { plugin->setDevices(&devices); }},
        {QStringLiteral("lost"), [=] { device.setPresent(false); }},
        {QStringLiteral("command"), [=] { plugin->queueVelmarAsciiMsg(name, argument, false); }},
        {QStringLiteral("stored"), [=] { plugin->queueVelmarAsciiMsg(name, argument, true); }},
        {QStringLiteral("query"), [=] { plugin->queueVelmarAsciiQueryMsg(name, argument); }},
        {QStringLiteral("direct"), [=] { plugin->sendVelmarAsciiMsgDirect(name, argument); }},
        {QStringLiteral("answer"), [=] { plugin->recvVelmarAsciiMsg(name, argument); }},
        {QStringLiteral("from"), [=] { plugin->recvVelmarAsciiMsg(QLatin1String(argument), "{}"); }},
        {QStringLiteral("process"), [=] { plugin->processVelmarAsciiPendRequests(); }},
        {QStringLiteral("clear"), [=] { plugin->clearVelmarAsciiPendingRequest(); }},
        {QStringLiteral("timeout"), [=] { plugin->handleVelmarAsciiRequestTimeout(); }},
        {QStringLiteral("save"), [=] { plugin->savePreset(argument.toInt()); }},
        {QStringLiteral("load"), [=] { plugin->loadPreset(argument.toInt()); }},
        {QStringLiteral("aes-command"), [=] { plugin->queueVelmarAES67Msg(name, argument); }},
        {QStringLiteral("aes-query"), [=] { plugin->queueVelmarAES67QueryMsg(name, argument); }},
        {QStringLiteral("aes-answer"), [=] { plugin->recvAES67Config(name, argument); }},
        {QStringLiteral("aes-from"), [=] { plugin->recvAES67Config(QLatin1String(argument), "..A"); }},
        {QStringLiteral("aes-timeout"), [=] { plugin->handleVelmarAES67RequestTimeout(); }},
        {QStringLiteral("unmark"), [=] { plugin->setSettingsChanged(false); }},
        {QStringLiteral("debug"), [=] { plugin->setDebugFromFramework(true); }},
        {QStringLiteral("note"), [=] { plugin->emitLogData(QString()); }},
        {QStringLiteral("net"), [=] { plugin->setNetInterfaceIndex(2); }},
        {QStringLiteral("forget"), [=] { plugin->told.clear(), plugin->logged.clear(); }},
    };
    QVERIFY2(verbs.contains(verb), qPrintable(verb));
    verbs.value(verb)();
}
