// Announcements. What is taken for one must be within the bounds that the host relies on.

#include "devhost/announcement.h"
#include "proof/fuzz/lines.h"

#include <QJsonDocument>
#include <QJsonObject>

namespace {

/// 1002003 for "1.2.3".
quint64 numberOf(const QByteArray &datagram)
{
    quint64 number = 0;
    const QJsonObject object = QJsonDocument::fromJson(datagram).object();
    for (const QString &part : object.value(QLatin1String("version")).toString().split(QLatin1Char('.')))
        number = number * 1000 + part.toUInt();
    return number;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QByteArray datagram(reinterpret_cast<const char *>(data), int(size));
    const auto heard = devhost::parseAnnouncement(datagram);
    if (!heard)
        return 0;
    for (const QString &text : {heard->name, heard->product, heard->model, heard->mac}) {
        if (text.isEmpty() || text.size() > 64 || text != text.trimmed() || text.contains(QLatin1Char('\n')))
            qFatal("a text that is none: %s", qPrintable(text));
    }
    if (heard->version != numberOf(datagram))
        qFatal("a version that was not announced: %u", heard->version);
    if (heard->controlPort == 0 || heard->version == 0)
        qFatal("a device that cannot be reached or has no version");
    return 0;
}
