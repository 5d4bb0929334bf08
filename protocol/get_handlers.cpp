// The gets of every section, and what an accepted reply writes into the caches.

#include "protocol/json.h"
#include "protocol/paths.h"
#include "protocol/reply_handlers.h"

namespace {

QJsonValue valueOf(const QJsonObject &reply)
{
    return reply.value(QLatin1String("value"));
}

/// Sets element @p index; entries before it that the device refused are held open by @p filler.
QJsonArray placed(QJsonArray array, int index, const QJsonValue &value, const QJsonValue &filler)
{
    while (array.size() <= index)
        array.append(filler);
    array.replace(index, value);
    return array;
}

void storeBluetooth(SectionCaches &caches, QLatin1String member, const QJsonValue &value)
{
    QJsonObject status = caches.object(Section::StatusBluetooth);
    status.insert(member, value);
    caches.setValue(Section::StatusBluetooth, status);
}

SectionGet bluetoothGet(QLatin1String path, QLatin1String member, json::Type type)
{
    return {path, [=](DeviceStateOwner &window, const QJsonObject &reply) {
                storeBluetooth(window.caches(), member, json::as(type, valueOf(reply)));
            }};
}

SectionGet phoneGet(int entry)
{
    return {path::indexed(path::BluetoothListEntry, entry),
            [entry](DeviceStateOwner &window, const QJsonObject &reply) {
                const QJsonArray list = json::array(window.caches().object(Section::StatusBluetooth), "list");
                storeBluetooth(window.caches(), QLatin1String("list"),
                               placed(list, entry, valueOf(reply).toObject(), QJsonObject()));
            }};
}

SectionGet mixerGet(int row)
{
    return {path::indexed(path::MixerRow, row), [row](DeviceStateOwner &window, const QJsonObject &reply) {
                SectionCaches &caches = window.caches();
                caches.setValue(
                    Section::Mixer,
                    placed(caches.array(Section::Mixer), row, valueOf(reply).toArray(), QJsonArray()));
            }};
}

} // namespace

QVector<SectionGet> getsOf(Section section)
{
    using path::literal;
    QVector<SectionGet> gets;
    switch (section) {
    case Section::StatusBluetooth:
        gets = {bluetoothGet(path::BluetoothState, literal("state"), json::Type::Text),
                bluetoothGet(path::BluetoothListSize, literal("list_size"), json::Type::Integer)};
        for (int entry = 0; entry < path::BluetoothListEntries; ++entry)
            gets.append(phoneGet(entry));
        gets.append(bluetoothGet(path::BluetoothDevice, literal("device"), json::Type::Object));
        break;
    case Section::Mixer:
        for (int row = 0; row < path::MixerRows; ++row)
            gets.append(mixerGet(row));
        break;
    default:
        gets.append(
            {sectionInfo(section).path, [section](DeviceStateOwner &window, const QJsonObject &reply) {
                 window.caches()[section] = reply;
             }});
    }
    return gets;
}
