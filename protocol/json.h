#pragma once

#include <QJsonArray>
#include <QJsonObject>
#include <QLatin1String>
#include <QString>

/// How the editor reads what the device tells: what is missing or of another type reads as false, 0 or empty.
namespace json {

enum class Type { Bool, Integer, Text, Object };

/// @p value with whatever is not of that type replaced.
inline QJsonValue as(Type type, const QJsonValue &value)
{
    switch (type) {
    case Type::Bool:
        return value.toBool();
    case Type::Integer:
        return value.toInt();
    case Type::Text:
        return value.toString();
    case Type::Object:
        return value.toObject();
    }
    Q_UNREACHABLE();
}

inline bool flag(const QJsonObject &object, const char *member)
{
    return object.value(QLatin1String(member)).toBool();
}

inline int number(const QJsonObject &object, const char *member)
{
    return object.value(QLatin1String(member)).toInt();
}

inline QString text(const QJsonObject &object, const char *member)
{
    return object.value(QLatin1String(member)).toString();
}

inline QJsonObject object(const QJsonObject &object, const char *member)
{
    return object.value(QLatin1String(member)).toObject();
}

inline QJsonArray array(const QJsonObject &object, const char *member)
{
    return object.value(QLatin1String(member)).toArray();
}

} // namespace json
