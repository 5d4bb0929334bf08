#include "protocol/settings.h"

#include "protocol/messages.h"

namespace {

/// The section's value with the setting in it.
QJsonValue merged(const Setting &setting, const QJsonValue &whole, const QJsonValue &value)
{
    const auto inserted = [&](QJsonObject object) {
        object.insert(setting.member, value);
        return object;
    };
    if (setting.member.isEmpty())
        return value;
    if (setting.element < 0)
        return inserted(whole.toObject());
    QJsonArray elements = whole.toArray();
    if (setting.element >= elements.size())
        return whole;
    elements.replace(setting.element, inserted(elements.at(setting.element).toObject()));
    return elements;
}

} // namespace

QString Setting::path() const
{
    QString path = sectionInfo(section).path;
    if (element >= 0)
        path += QStringLiteral("/%1").arg(element);
    return member.isEmpty() ? path : path + QLatin1Char('/') + member;
}

QByteArray Setting::message(const QJsonValue &value) const
{
    if (rendering == Document)
        return message::set(path(), value);
    return message::setNumber(path(), type == json::Type::Bool ? int(value.toBool()) : value.toInt());
}

ReplyHandler Setting::confirmation() const
{
    return [setting = *this](DeviceStateOwner &owner, const QJsonObject &reply) {
        if (json::text(reply, "result") != QLatin1String("OK"))
            return;
        const QJsonValue value = json::as(setting.type, reply.value(QLatin1String("value")));
        SectionCaches &caches = owner.caches();
        caches.setValue(setting.section, merged(setting, caches.value(setting.section), value));
        if (setting.refresh == Refreshing)
            owner.settingsRefresh();
    };
}
