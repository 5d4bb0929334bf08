// What a confirmed set writes into the caches, so that they show what the device now holds.

#include "protocol/paths.h"
#include "protocol/reply_handlers.h"

#include <algorithm>

namespace {

enum class Kind { Bool, Integer, Text };

enum class Refresh { No, Yes };

/// One setting that has a path of its own inside a section's object.
struct MemberSetting
{
    QLatin1String path;
    Section section;
    Kind kind;
    Refresh refresh;
};

constexpr MemberSetting MemberSettings[] = {
    {path::ToneEnable, Section::ToneGenerator, Kind::Bool, Refresh::No},
    {path::ToneFrequency, Section::ToneGenerator, Kind::Integer, Refresh::No},
    {path::ToneAmplitude, Section::ToneGenerator, Kind::Integer, Refresh::No},
    {path::UsbPriority, Section::Usb, Kind::Bool, Refresh::Yes},
    {path::UsbMode, Section::Usb, Kind::Text, Refresh::Yes},
    {path::BluetoothEnable, Section::Bluetooth, Kind::Bool, Refresh::Yes},
    {path::BluetoothButton, Section::Bluetooth, Kind::Bool, Refresh::Yes},
    {path::BluetoothName, Section::Bluetooth, Kind::Text, Refresh::Yes},
    {path::BluetoothConnectionMode, Section::Bluetooth, Kind::Text, Refresh::Yes},
    {path::BluetoothProfile, Section::Bluetooth, Kind::Text, Refresh::Yes},
    {path::NotificationsEnable, Section::Notifications, Kind::Bool, Refresh::No},
};

constexpr Section WholeSettings[] = {Section::Network, Section::Notifications, Section::Metering};

constexpr Section StripSections[] = {Section::DanteRx,   Section::DanteTx, Section::UsbPlayback,
                                     Section::UsbRecord, Section::BtSink,  Section::BtSource};

QJsonValue converted(const QJsonValue &value, Kind kind)
{
    switch (kind) {
    case Kind::Bool:
        return value.toBool();
    case Kind::Integer:
        return value.toInt();
    case Kind::Text:
        return value.toString();
    }
    Q_UNREACHABLE();
}

/// A reply that is worth taking over, with what a handler needs of it.
struct Confirmation
{
    Confirmation(QObject *window, const QJsonObject &reply)
        : param(reply.value(QLatin1String("param")).toString())
        , value(reply.value(QLatin1String("value")))
    {
        if (reply.value(QLatin1String("result")).toString() == QLatin1String("OK"))
            owner = dynamic_cast<DeviceStateOwner *>(window);
    }

    DeviceStateOwner *owner = nullptr; ///< null when there is nothing to do
    QString param;
    QJsonValue value;
};

/// Sets one member of element @p index of a section's array; an element that the device never told of is
/// left alone.
void setElementMember(SectionCaches &caches, Section section, int index, const QString &member,
                      const QJsonValue &value)
{
    QJsonArray elements = caches.array(section);
    if (index < 0 || index >= elements.size())
        return;
    QJsonObject element = elements.at(index).toObject();
    element.insert(member, value);
    elements.replace(index, element);
    caches.setValue(section, elements);
}

const MemberSetting *memberSettingAt(const QString &path)
{
    for (const MemberSetting &setting : MemberSettings) {
        if (path == setting.path)
            return &setting;
    }
    return nullptr;
}

void confirmMember(QObject *window, QJsonObject reply)
{
    const Confirmation reported(window, reply);
    const MemberSetting *setting = memberSettingAt(reported.param);
    if (!reported.owner || !setting)
        return;
    SectionCaches &caches = reported.owner->caches();
    QJsonObject object = caches.object(setting->section);
    object.insert(path::component(reported.param, 3), converted(reported.value, setting->kind));
    caches.setValue(setting->section, object);
    if (setting->refresh == Refresh::Yes)
        reported.owner->settingsRefresh();
}

void confirmWholeValue(QObject *window, QJsonObject reply)
{
    const Confirmation reported(window, reply);
    const SectionInfo *info = sectionAt(reported.param);
    if (!reported.owner || !info)
        return;
    reported.owner->caches().setValue(info->section, reported.value.toObject());
    reported.owner->settingsRefresh();
}

void confirmVoiceCueEnable(QObject *window, QJsonObject reply)
{
    const Confirmation reported(window, reply);
    if (!reported.owner)
        return;
    setElementMember(reported.owner->caches(), Section::VoiceCue, path::component(reported.param, 3).toInt(),
                     QStringLiteral("enable"), reported.value.toBool());
    reported.owner->settingsRefresh();
}

const SectionInfo *stripSectionOf(const QString &path)
{
    return sectionAt(path.section(QLatin1Char('/'), 0, 3));
}

void confirmChannelMember(QObject *window, QJsonObject reply)
{
    const Confirmation reported(window, reply);
    const SectionInfo *info = stripSectionOf(reported.param);
    if (!reported.owner || !info)
        return;
    const QString member = path::component(reported.param, 5);
    const Kind kind = member == QLatin1String("gain") ? Kind::Integer : Kind::Bool;
    setElementMember(reported.owner->caches(), info->section, path::component(reported.param, 4).toInt(),
                     member, converted(reported.value, kind));
}

/// The mixer's cache already holds what was sent.
void confirmMixer(QObject *, QJsonObject) { }

bool isChannelMember(const QString &path)
{
    const SectionInfo *info = stripSectionOf(path);
    const QString member = path::component(path, 5);
    return info
        && std::find(std::begin(StripSections), std::end(StripSections), info->section)
        != std::end(StripSections)
        && (member == QLatin1String("gain") || member == QLatin1String("mute"));
}

bool isVoiceCueEnable(const QString &path)
{
    return path.startsWith(path::VoiceCue) && path.endsWith(QLatin1String("/enable"));
}

} // namespace

ReplyHandler setHandlerFor(const QString &path)
{
    if (memberSettingAt(path))
        return confirmMember;
    if (path == path::Mixer)
        return confirmMixer;
    if (isVoiceCueEnable(path))
        return confirmVoiceCueEnable;
    if (isChannelMember(path))
        return confirmChannelMember;
    const SectionInfo *info = sectionAt(path);
    const bool whole = info
        && std::find(std::begin(WholeSettings), std::end(WholeSettings), info->section)
            != std::end(WholeSettings);
    return whole ? confirmWholeValue : nullptr;
}
