#include "tests/support/scripted_device.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTimer>

namespace support {

namespace {

QJsonValue parsed(const char *json)
{
    const QJsonDocument document = QJsonDocument::fromJson(json);
    return document.isArray() ? QJsonValue(document.array()) : QJsonValue(document.object());
}

QJsonArray repeated(int count, const QJsonValue &value)
{
    QJsonArray array;
    for (int i = 0; i < count; ++i)
        array.append(value);
    return array;
}

QHash<QString, QJsonValue> startTree()
{
    const QJsonValue input = parsed(R"({"mute":false,"invert":false,"gain":0})");
    const QJsonValue output = parsed(R"({"mute":false,"gain":0,"limiter":{"enable":false,"threshold":0}})");
    QHash<QString, QJsonValue> tree{
        {QStringLiteral("/info"), parsed(R"({"model":"KBX"})")},
        {QStringLiteral("/status/voice_cue"), repeated(4, parsed(R"({"valid":true})"))},
        {QStringLiteral("/status/usb"), parsed(R"({"state":"connected"})")},
        {QStringLiteral("/status/bluetooth/state"), QStringLiteral("connected")},
        {QStringLiteral("/status/bluetooth/list_size"), 2},
        {QStringLiteral("/status/bluetooth/device"),
         parsed(R"({"name":"Phone","rssi":-60,"album":"Album","artist":"Artist","song":"Song"})")},
        {QStringLiteral("/system/network"),
         parsed(R"({"ip_mode":"dhcp","static_ip":"10.0.0.2","static_netmask":"255.0.0.0",)"
                R"("static_gateway":"10.0.0.1"})")},
        {QStringLiteral("/system/notifications"), parsed(R"({"enable":false,"ip":"239.1.1.1","port":5000})")},
        {QStringLiteral("/system/metering"), parsed(R"({"ip":"239.255.1.1","port":5100})")},
        {QStringLiteral("/system/function_gen"),
         parsed(R"({"enable":false,"frequency":440,"amplitude":-20})")},
        {QStringLiteral("/system/usb"), parsed(R"({"priority":false,"mode":"2x2"})")},
        {QStringLiteral("/system/bluetooth"),
         parsed(R"({"enable":true,"button":true,"name":"KBX","connection_mode":"basic","profile":"both"})")},
        {QStringLiteral("/system/voice_cue"), repeated(4, parsed(R"({"enable":true})"))},
        {QStringLiteral("/preset/dsp/dante_rx"), repeated(4, input)},
        {QStringLiteral("/preset/dsp/dante_tx"), repeated(4, output)},
        {QStringLiteral("/preset/dsp/usb_playback"), repeated(2, input)},
        {QStringLiteral("/preset/dsp/usb_record"), repeated(2, output)},
        {QStringLiteral("/preset/dsp/bt_sink"), repeated(2, input)},
        {QStringLiteral("/preset/dsp/bt_source"), repeated(1, output)},
        {QStringLiteral("/preset/dsp/voice_cue"), repeated(1, parsed(R"({"mute":false,"gain":0})"))},
    };
    for (int row = 0; row < 7; ++row)
        tree.insert(QStringLiteral("/preset/dsp/mixer/%1").arg(row), repeated(10, -100));
    for (int entry = 0; entry < 8; ++entry)
        tree.insert(QStringLiteral("/status/bluetooth/list/%1").arg(entry), QJsonObject());
    tree.insert(QStringLiteral("/status/bluetooth/list/0"),
                parsed(R"({"mac":"AA:01","name":"Phone","keep":true})"));
    tree.insert(QStringLiteral("/status/bluetooth/list/1"), parsed(R"({"mac":"AA:02","name":"Tablet"})"));
    return tree;
}

QByteArray reply(const QString &cmd, const QString &path, const QString &result, const QJsonValue &value)
{
    QJsonObject object{
        {QStringLiteral("cmd"), cmd}, {QStringLiteral("param"), path}, {QStringLiteral("result"), result}};
    if (!value.isUndefined())
        object.insert(QStringLiteral("value"), value);
    return QJsonDocument(object).toJson(QJsonDocument::Compact);
}

/// What the device holds after a set: a switch that was sent as 0 or 1 is a bool.
QJsonValue taken(const QString &path, const QJsonValue &value)
{
    const bool isSwitch = path.endsWith(QLatin1String("/mute")) || path.endsWith(QLatin1String("/enable"));
    return isSwitch && value.isDouble() ? QJsonValue(value.toInt() != 0) : value;
}

QString ok()
{
    return QStringLiteral("OK");
}

} // namespace

ScriptedDevice::ScriptedDevice(PlexoPlugin *plugin)
    : m_plugin(plugin)
    , m_tree(startTree())
{
    connect(
        plugin, &PlexoPlugin::sendVelmarAsciiMsg, this,
        [this](const QString &name, pxDevice::e_dev_type, const QByteArray &bytes) { take(name, bytes); });
}

QStringList ScriptedDevice::commands() const
{
    return m_sent.filter(QLatin1String("{\"set\":"));
}

QStringList ScriptedDevice::gets() const
{
    QStringList paths;
    for (const QString &message : m_sent.filter(QLatin1String("{\"get\":")))
        paths.append(message.section(QLatin1Char('"'), 3, 3));
    return paths;
}

void ScriptedDevice::take(const QString &name, const QByteArray &bytes)
{
    m_sent.append(QString::fromUtf8(bytes));
    if (m_silent)
        return;
    const QByteArray answered = answer(bytes);
    ++m_unanswered;
    QTimer::singleShot(0, this, [this, name, answered] {
        --m_unanswered;
        if (m_plugin)
            m_plugin->recvVelmarAsciiMsg(name, answered);
    });
}

bool ScriptedDevice::isRefused(const QString &path) const
{
    return std::any_of(m_refused.begin(), m_refused.end(),
                       [&path](const QString &part) { return path.contains(part); });
}

QByteArray ScriptedDevice::answer(const QByteArray &request)
{
    const QJsonObject object = QJsonDocument::fromJson(request).object();
    const bool isGet = object.contains(QLatin1String("get"));
    const QString cmd = isGet ? QStringLiteral("get") : QStringLiteral("set");
    const QString path = object.value(cmd).toString();
    if (isRefused(path))
        return reply(cmd, path, QStringLiteral("refused by the script"), QJsonValue::Undefined);
    return reply(cmd, path, ok(),
                 isGet ? m_tree.value(path) : taken(path, object.value(QLatin1String("value"))));
}

void ScriptedDevice::deliver(const QByteArray &bytes)
{
    m_plugin->recvVelmarAsciiMsg(m_plugin->getDeviceName(), bytes);
}

void ScriptedDevice::deliverGet(const QString &path, const QJsonValue &value)
{
    deliver(reply(QStringLiteral("get"), path, ok(), value));
}

void ScriptedDevice::deliverSet(const QString &path, const QJsonValue &value)
{
    deliver(reply(QStringLiteral("set"), path, ok(), value));
}

} // namespace support
