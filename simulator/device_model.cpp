#include "simulator/device_model.h"

#include "simulator/faults.h"

namespace sim {

namespace {

BluetoothSettings bluetoothSettings(const QJsonObject &section)
{
    using Reconnect = BluetoothSettings::Reconnect;
    const QString mode = section.value(QStringLiteral("connection_mode")).toString();
    BluetoothSettings settings;
    settings.enabled = section.value(QStringLiteral("enable")).toBool();
    settings.media = section.value(QStringLiteral("profile")).toString() != QLatin1String("hfp");
    if (mode == QLatin1String("basic"))
        settings.reconnect = Reconnect::Never;
    else
        settings.reconnect = mode == QLatin1String("reconnect") ? Reconnect::Any : Reconnect::Protected;
    return settings;
}

} // namespace

DeviceModel::DeviceModel(const Identity &identity, quint32 seed, QObject *parent)
    : QObject(parent)
    , m_identity(identity)
    , m_tree(factoryTree(identity))
    , m_phone(seed)
    , m_programme(seed)
{
    addDeviceCommands();
    addBluetoothCommands();
    connect(&m_phone, &Phone::cueDue, this, &DeviceModel::playEventCue);
    settingsApplied();
}

QByteArray DeviceModel::answer(const QByteArray &bytes)
{
    const Request request = parseRequest(bytes);
    if (request.path.startsWith(QLatin1String("/status")))
        publishStatus();
    return request.kind == Request::Kind::Text ? textAnswer(request.text).toLatin1()
                                               : replyBytes(request, jsonAnswer(request));
}

Outcome DeviceModel::jsonAnswer(const Request &request)
{
    const QString &path = request.path;
    if (request.kind == Request::Kind::Bad)
        return {{}, request.text};
    if (isRefused(m_refuse, request))
        return refusedOnRequest(m_refuse, request);
    if (request.kind == Request::Kind::Set)
        return path.startsWith(QLatin1String("/control/")) ? run(path, request.value)
                                                           : set(path, request.value);
    if (m_commands.contains(path))
        return Outcome::refuse(path, QStringLiteral("a command, it can only be set"));
    return m_tree.get(path);
}

Outcome DeviceModel::set(const QString &path, const QJsonValue &value)
{
    Outcome outcome = m_tree.set(path, value);
    if (!outcome.accepted())
        return outcome;
    if (path.startsWith(QLatin1String("/status/bluetooth/list")))
        m_phone.setPairedList(m_tree.value(QStringLiteral("/status/bluetooth/list")).toArray());
    settingsApplied();
    return outcome;
}

Outcome DeviceModel::run(const QString &path, const QJsonValue &argument)
{
    const auto command = m_commands.constFind(path);
    if (command == m_commands.constEnd())
        return Outcome::refuse(path, QStringLiteral("no such command"));
    Outcome checked = check(*m_tree.describe(path), path, {}, argument);
    if (!checked.accepted())
        return checked;
    const QString obstacle = (*command)(checked.value);
    return obstacle.isEmpty() ? checked : Outcome::refuse(path, obstacle);
}

/// Brings everything that follows from the tree's settings in line with them.
void DeviceModel::settingsApplied()
{
    m_phone.applySettings(bluetoothSettings(m_tree.value(QStringLiteral("/system/bluetooth")).toObject()));
    emit settingsChanged();
}

/// Copies into the tree what lives outside it; only who asks the device can see that it was out of date.
void DeviceModel::publishStatus()
{
    m_tree.put(QStringLiteral("/status/bluetooth"), m_phone.status());
    m_tree.put(QStringLiteral("/status/usb"), m_usbHost.status());
    m_tree.put(QStringLiteral("/status/voice_cue"), m_cues.status());
}

void DeviceModel::advance(int ms)
{
    m_phone.advance(ms);
    m_usbHost.advance(ms);
    m_cues.advance(ms);
    m_programme.advance(ms);
}

void DeviceModel::powerUp()
{
    m_phone.powerUp();
    m_usbHost.powerUp();
}

void DeviceModel::playEventCue(int cue)
{
    const QJsonArray cues = m_tree.value(QStringLiteral("/system/voice_cue")).toArray();
    if (cues.at(cue).toObject().value(QStringLiteral("enable")).toBool())
        m_cues.play(cue);
}

Levels DeviceModel::levels() const
{
    const QJsonObject generator = m_tree.value(QStringLiteral("/system/function_gen")).toObject();
    const bool stereo = m_tree.value(QStringLiteral("/system/usb/mode")).toString() == QLatin1String("2x2");
    SourceLevels sources;
    sources.fill(SilenceDb);
    for (int source = 0; source < 4; ++source)
        sources[size_t(source)] = m_programme.level(source);
    for (int source = 4; source < (stereo ? 6 : 5) && m_usbHost.isActive(); ++source)
        sources[size_t(source)] = m_programme.level(source);
    for (int source = 6; source < 8 && m_phone.isSounding(); ++source)
        sources[size_t(source)] = m_programme.level(source) + m_phone.volumeDb();
    if (m_cues.isPlaying())
        sources[8] = m_programme.level(8);
    if (generator.value(QStringLiteral("enable")).toBool())
        sources[9] = generator.value(QStringLiteral("amplitude")).toDouble();
    return computeLevels(deskOf(m_tree.value(QStringLiteral("/preset/dsp")).toObject(), m_pushed), sources);
}

QJsonObject DeviceModel::toJson() const
{
    return {{QStringLiteral("format"), 1},
            {QStringLiteral("system"), m_tree.value(QStringLiteral("/system"))},
            {QStringLiteral("preset"), m_tree.value(QStringLiteral("/preset"))},
            {QStringLiteral("presets"), m_presets.toJson()},
            {QStringLiteral("paired"), m_phone.pairedList()},
            {QStringLiteral("recordings_ms"), m_cues.toJson()}};
}

QString DeviceModel::fromJson(const QJsonObject &state)
{
    if (state.value(QStringLiteral("format")).toInt() != 1)
        return QStringLiteral("the file is not of format 1");
    const QJsonObject whole = toJson();
    for (auto member = whole.begin(); member != whole.end(); ++member) {
        if (state.value(member.key()).type() != member.value().type())
            return QStringLiteral("the member \"%1\" is missing or damaged").arg(member.key());
    }
    ParameterTree restored = m_tree;
    for (const QString &part : {QStringLiteral("system"), QStringLiteral("preset")}) {
        const Outcome outcome = restored.set(QLatin1Char('/') + part, state.value(part));
        if (!outcome.accepted())
            return outcome.refusal;
    }
    m_tree = restored;
    m_presets.fromJson(state.value(QStringLiteral("presets")).toArray());
    m_phone.setPairedList(state.value(QStringLiteral("paired")).toArray());
    m_cues.fromJson(state.value(QStringLiteral("recordings_ms")).toArray());
    settingsApplied();
    return {};
}

} // namespace sim
