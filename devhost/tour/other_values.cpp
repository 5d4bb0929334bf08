#include "devhost/tour/other_values.h"

#include <QJsonArray>
#include <QJsonObject>

namespace devhost::tour {

namespace {

constexpr double LowestLevel = -100; // dB, of every level of the device

QJsonObject otherObject(QJsonObject object)
{
    for (auto it = object.begin(); it != object.end(); ++it)
        it.value() = otherValue(it.value());
    return object;
}

QJsonArray otherArray(const QJsonArray &array)
{
    QJsonArray other;
    for (const QJsonValue &value : array)
        other.append(otherValue(value));
    return other;
}

QString otherText(const QString &text)
{
    if (text == QLatin1String("static"))
        return QStringLiteral("dhcp");
    return text == QLatin1String("dhcp") ? QStringLiteral("static") : text;
}

} // namespace

QJsonValue otherValue(const QJsonValue &value)
{
    switch (value.type()) {
    case QJsonValue::Bool:
        return !value.toBool();
    case QJsonValue::Double:
        return value.toDouble() > LowestLevel ? value.toDouble() - 1 : value.toDouble() + 1;
    case QJsonValue::String:
        return otherText(value.toString());
    case QJsonValue::Array:
        return otherArray(value.toArray());
    case QJsonValue::Object:
        return otherObject(value.toObject());
    default:
        return value;
    }
}

} // namespace devhost::tour
