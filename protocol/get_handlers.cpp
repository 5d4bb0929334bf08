// What an accepted get reply writes into the caches.

#include "protocol/paths.h"
#include "protocol/reply_handlers.h"

namespace {

QString paramOf(const QJsonObject &reply)
{
    return reply.value(QLatin1String("param")).toString();
}

QJsonValue valueOf(const QJsonObject &reply)
{
    return reply.value(QLatin1String("value"));
}

int indexIn(const QJsonObject &reply)
{
    return path::component(paramOf(reply), 4).toInt();
}

SectionCaches *cachesOf(QObject *window)
{
    auto *owner = dynamic_cast<DeviceStateOwner *>(window);
    return owner ? &owner->caches() : nullptr;
}

/// Sets element @p index; entries that were refused before it are held open by @p filler.
void placeAt(QJsonArray &array, int index, const QJsonValue &value, const QJsonValue &filler)
{
    while (array.size() <= index)
        array.append(filler);
    array.replace(index, value);
}

void storeWholeSection(QObject *window, QJsonObject reply)
{
    const SectionInfo *info = sectionAt(paramOf(reply));
    if (SectionCaches *caches = cachesOf(window); caches && info)
        (*caches)[info->section] = reply;
}

void storeBluetoothMember(QObject *window, const QString &member, const QJsonValue &value)
{
    SectionCaches *caches = cachesOf(window);
    if (!caches)
        return;
    QJsonObject status = caches->object(Section::StatusBluetooth);
    status.insert(member, value);
    caches->setValue(Section::StatusBluetooth, status);
}

void storeBluetoothState(QObject *window, QJsonObject reply)
{
    storeBluetoothMember(window, QStringLiteral("state"), valueOf(reply).toString());
}

void storeBluetoothListSize(QObject *window, QJsonObject reply)
{
    storeBluetoothMember(window, QStringLiteral("list_size"), valueOf(reply).toInt());
}

void storeBluetoothDevice(QObject *window, QJsonObject reply)
{
    storeBluetoothMember(window, QStringLiteral("device"), valueOf(reply).toObject());
}

void storeBluetoothListEntry(QObject *window, QJsonObject reply)
{
    const SectionCaches *caches = cachesOf(window);
    if (!caches)
        return;
    QJsonArray list = caches->object(Section::StatusBluetooth).value(QLatin1String("list")).toArray();
    placeAt(list, indexIn(reply), valueOf(reply).toObject(), QJsonObject());
    storeBluetoothMember(window, QStringLiteral("list"), list);
}

void storeMixerRow(QObject *window, QJsonObject reply)
{
    SectionCaches *caches = cachesOf(window);
    if (!caches)
        return;
    QJsonArray rows = caches->array(Section::Mixer);
    placeAt(rows, indexIn(reply), valueOf(reply).toArray(), QJsonArray());
    caches->setValue(Section::Mixer, rows);
}

bool isOneOf(const QString &path, QLatin1String pattern, int count)
{
    for (int i = 0; i < count; ++i) {
        if (path == path::indexed(pattern, i))
            return true;
    }
    return false;
}

} // namespace

ReplyHandler getHandlerFor(const QString &path)
{
    if (path == path::BluetoothState)
        return storeBluetoothState;
    if (path == path::BluetoothListSize)
        return storeBluetoothListSize;
    if (path == path::BluetoothDevice)
        return storeBluetoothDevice;
    if (isOneOf(path, path::BluetoothListEntry, path::BluetoothListEntries))
        return storeBluetoothListEntry;
    if (isOneOf(path, path::MixerRow, path::MixerRows))
        return storeMixerRow;
    const bool composed = path == path::StatusBluetooth || path == path::Mixer;
    return sectionAt(path) && !composed ? storeWholeSection : nullptr;
}
