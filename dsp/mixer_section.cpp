#include "dsp/mixer_section.h"

#include <QJsonArray>
#include <QLatin1String>

#include <cmath>

namespace {

const QLatin1String valueMember("value");

void padTo(QJsonArray &array, int size, const QJsonValue &filler)
{
    while (array.size() < size)
        array.append(filler);
}

} // namespace

int roundedLevel(double dB)
{
    return static_cast<int>(std::floor(qBound(-1e9, dB, 1e9) + 0.5));
}

bool storeCrosspoint(QJsonObject &section, int source, int sink, int level)
{
    if (source < 0 || source >= mixerSources || sink < 0 || sink >= mixerSinks)
        return false;

    QJsonArray sinks = section.value(valueMember).toArray();
    padTo(sinks, sink + 1, QJsonArray());
    QJsonArray levels = sinks.at(sink).toArray();
    padTo(levels, source + 1, 0);
    levels.replace(source, level);
    sinks.replace(sink, levels);
    section.insert(valueMember, sinks);
    return true;
}
