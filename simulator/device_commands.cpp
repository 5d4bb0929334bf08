// The commands of the device: "/control/..." and the plain texts.

#include "simulator/device_model.h"

#include <QDebug>

namespace sim {

namespace {

QString done()
{
    return {};
}

} // namespace

void DeviceModel::addDeviceCommands()
{
    const auto add = [this](const char *name, const Command &command) {
        m_commands.insert(QStringLiteral("/control/") + QLatin1String(name), command);
    };
    add("identify", [](const QJsonValue &on) {
        qInfo() << "identify" << (on.toBool() ? "on" : "off");
        return done();
    });
    add("defaults", [this](const QJsonValue &) {
        restoreDefaults();
        return done();
    });
    add("reboot", [this](const QJsonValue &) {
        emit rebootRequested();
        return done();
    });
    add("req_metering", [this](const QJsonValue &on) {
        emit meteringRequested(on.toInt() > 0);
        return done();
    });
    add("save_preset", [this](const QJsonValue &slot) {
        savePreset(slot.toInt());
        return done();
    });
    add("load_preset", [this](const QJsonValue &slot) { return loadPreset(slot.toInt()); });
    add("fwdl", [this](const QJsonValue &order) { return beginFetch(order.toObject()); });
    for (int cue = 0; cue < VoiceCueCount; ++cue)
        m_commands.insert(QStringLiteral("/control/voice_cue/%1/play").arg(cue),
                          [this, cue](const QJsonValue &) { return m_cues.play(cue); });
}

void DeviceModel::addBluetoothCommands()
{
    const auto add = [this](const char *name, const std::function<QString()> &action) {
        m_commands.insert(QStringLiteral("/control/bluetooth/") + QLatin1String(name),
                          [action](const QJsonValue &) { return action(); });
    };
    add("pair", [this] { return m_phone.pair(); });
    add("disconnect", [this] { return m_phone.disconnectPhone(); });
    add("clear_list", [this] {
        m_phone.clearList();
        emit settingsChanged();
        return done();
    });
    const std::pair<const char *, void (Player::*)()> keys[]
        = {{"play", &Player::play}, {"pause", &Player::pause},   {"prev", &Player::previous},
           {"next", &Player::next}, {"vol_up", &Player::louder}, {"vol_down", &Player::softer}};
    for (const auto &key : keys)
        add(key.first, [this, press = key.second] { return m_phone.control(press); });
}

QString DeviceModel::beginFetch(const QJsonObject &order)
{
    const QStringList targets = m_tree.describe(QStringLiteral("/control/fwdl/target"))->names;
    const int cue = targets.indexOf(order.value(QStringLiteral("target")).toString());
    const std::optional<TftpUri> source = parseTftpUri(order.value(QStringLiteral("uri")).toString());
    if (cue < 0)
        return QStringLiteral("no target");
    if (!source)
        return QStringLiteral("the uri is not of the form tftp://ADDRESS:PORT/FILE");
    if (m_cues.isLoading())
        return QStringLiteral("another file is being fetched");
    m_cues.beginLoad(cue);
    emit fetchRequested(*source);
    return {};
}

void DeviceModel::finishLoad(int ms)
{
    m_cues.finishLoad(ms);
    emit settingsChanged();
}

void DeviceModel::abandonLoad()
{
    m_cues.abandonLoad();
}

void DeviceModel::savePreset(int slot)
{
    m_presets.save(slot, m_tree);
    emit settingsChanged();
}

QString DeviceModel::loadPreset(int slot)
{
    QString obstacle = m_presets.load(slot, &m_tree);
    if (obstacle.isEmpty())
        settingsApplied();
    return obstacle;
}

void DeviceModel::restoreDefaults()
{
    qInfo() << "factory defaults";
    m_tree = factoryTree(m_identity);
    m_presets.clear();
    m_cues.restoreFactory();
    m_phone.restoreFactoryList();
    settingsApplied();
}

QString DeviceModel::textAnswer(const QString &command)
{
    const QStringList words = command.split(QLatin1Char(' '));
    const QString &verb = words.first();
    if (command == QLatin1String("QUERY"))
        return QStringLiteral("ACK QUERY %1 %2\r").arg(m_identity.name(), m_identity.version());
    if (words.size() != 2 || (verb != QLatin1String("SAVE") && verb != QLatin1String("LOAD")))
        return QStringLiteral("NACK\r");
    const Outcome slot
        = check(*m_tree.describe(QStringLiteral("/control/save_preset")), verb, {}, words.last());
    bool carriedOut = slot.accepted();
    if (carriedOut && verb == QLatin1String("SAVE"))
        savePreset(slot.value.toInt());
    else if (carriedOut)
        carriedOut = loadPreset(slot.value.toInt()).isEmpty();
    return QStringLiteral("%1 %2 %3\r")
        .arg(carriedOut ? QStringLiteral("ACK") : QStringLiteral("NACK"), verb, words.last());
}

} // namespace sim
