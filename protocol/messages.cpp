#include "protocol/messages.h"

#include "protocol/paths.h"

#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>
#include <cmath>
#include <limits>

namespace message {

namespace {

// The device's own meaning of the number is not known; 100 is what it expects.
constexpr int MeteringRequestValue = 100;

} // namespace

QByteArray get(const QString &path)
{
    return QStringLiteral("{\"get\":\"%1\"}").arg(path).toLatin1();
}

QByteArray set(const QString &path, const QJsonValue &value)
{
    const QJsonObject document{{QStringLiteral("set"), path}, {QStringLiteral("value"), value}};
    return QJsonDocument(document).toJson(QJsonDocument::Compact);
}

QByteArray setNumber(const QString &path, int value)
{
    return QStringLiteral("{\"set\":\"%1\", \"value\":%2}").arg(path).arg(value).toLatin1();
}

QByteArray setQuotedNumber(const QString &path, int value)
{
    return QStringLiteral("{\"set\":\"%1\", \"value\":\"%2\"}").arg(path).arg(value).toLatin1();
}

QByteArray requestMetering()
{
    return setNumber(path::RequestMetering, MeteringRequestValue);
}

QByteArray reboot()
{
    return QStringLiteral("{\"set\":\"%1\", \"value\":true}").arg(path::Reboot).toLatin1();
}

int wholeGain(double gain)
{
    if (std::isnan(gain))
        return 0;
    constexpr double Lowest = std::numeric_limits<int>::min();
    constexpr double Highest = std::numeric_limits<int>::max();
    return int(std::clamp(gain, Lowest, Highest));
}

} // namespace message
