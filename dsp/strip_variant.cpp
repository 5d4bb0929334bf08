#include "dsp/strip_variant.h"

#include <QString>

namespace {

bool flag(const QJsonObject &object, QLatin1String member)
{
    return object.value(member).toBool();
}

int number(const QJsonObject &object, QLatin1String member)
{
    return object.value(member).toInt();
}

} // namespace

QVector<StripRecord> recordsOfChannel(StripKind kind, const QJsonObject &channel)
{
    const bool mute = flag(channel, QLatin1String("mute"));
    const int gain = number(channel, QLatin1String("gain"));
    if (kind == StripKind::Input)
        return {{InputMute, mute}, {InputInvert, flag(channel, QLatin1String("invert"))}, {InputGain, gain}};

    const QJsonObject limiter = channel.value(QLatin1String("limiter")).toObject();
    return {{OutputMute, mute},
            {OutputGain, gain},
            {OutputLimiterEnable, flag(limiter, QLatin1String("enable"))},
            {OutputLimiterThreshold, number(limiter, QLatin1String("threshold"))}};
}

QVector<StripRecord> recordsOfUnavailableChannel(StripKind kind)
{
    if (kind == StripKind::Input)
        return {{InputMute, false}, {InputInvert, false}, {InputGain, 0}};
    return {{OutputMute, false}, {OutputGain, 0}};
}
