#include "devhost/refusals.h"

#include <QJsonArray>
#include <QJsonDocument>

namespace devhost {

namespace {

constexpr int MostKept = 100; // a device
constexpr int LongestText = 160;

QString textOf(const QJsonValue &value)
{
    const QByteArray list = QJsonDocument(QJsonArray{value}).toJson(QJsonDocument::Compact);
    return QString::fromUtf8(list.mid(1, list.size() - 2));
}

} // namespace

QString shortened(const QString &text)
{
    const QString line = text.simplified();
    return line.size() > LongestText ? line.left(LongestText) + QChar(0x2026) : line;
}

QString reasonOf(const Refusal &refusal)
{
    const QString path = refusal.request.path + QStringLiteral(": ");
    const bool repeats = refusal.reason.startsWith(path) && refusal.reason.size() > path.size();
    return shortened(repeats ? refusal.reason.mid(path.size()) : refusal.reason);
}

QString wordsFor(const RequestText &request)
{
    if (request.command == QLatin1String("get"))
        return Refusals::tr("read %1").arg(shortened(request.path));
    if (request.command == QLatin1String("set"))
        return Refusals::tr("set %1 to %2").arg(shortened(request.path), shortened(textOf(request.value)));
    return Refusals::tr("do %1").arg(shortened(request.command));
}

Refusals::Refusals(const RequestWatch *requests, QObject *parent)
    : QObject(parent)
{
    connect(requests, &RequestWatch::refused, this, &Refusals::note);
}

void Refusals::note(const Refusal &refusal)
{
    // What cannot be read leaves a gap in the editor, which the session tells of; nothing of the user's is
    // lost.
    if (refusal.request.command == QLatin1String("get"))
        return;
    Device &device = m_devices[refusal.device];
    ++device.count;
    device.latest.prepend({QDateTime::currentDateTime(), wordsFor(refusal.request), reasonOf(refusal)});
    if (device.latest.size() > MostKept)
        device.latest.removeLast();
    const RefusedChange change = device.latest.first();
    emit changed(refusal.device);
    emit refused(refusal.device, tr("%1 refused to %2: %3.").arg(refusal.device, change.what, change.reason));
}

void Refusals::clear(const QString &device)
{
    if (m_devices.remove(device) > 0)
        emit changed(device);
}

} // namespace devhost
