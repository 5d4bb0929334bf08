#include "simulator/levels.h"

#include <QtGlobal>

#include <cmath>

namespace sim {

namespace {

double throughStrip(double level, const Strip &strip)
{
    if (strip.mute || level <= silenceDb)
        return silenceDb;
    const double amplified = level + strip.gain;
    const double limited = strip.limited ? qMin(amplified, strip.threshold) : amplified;
    return qBound(silenceDb, limited, fullDb);
}

double mixed(const std::array<double, sourceCount> &inputs,
             const std::array<double, sourceCount> &crosspoints)
{
    double power = 0;
    for (size_t source = 0; source < inputs.size(); ++source) {
        if (inputs[source] > silenceDb && crosspoints[source] > silenceDb)
            power += std::pow(10.0, (inputs[source] + crosspoints[source]) / 10.0);
    }
    return power > 0 ? 10.0 * std::log10(power) : silenceDb;
}

char levelByte(double level)
{
    return char(qint8(std::lround(level)));
}

} // namespace

Levels computeLevels(const Desk &desk, const SourceLevels &sources)
{
    Levels levels;
    for (size_t source = 0; source < sources.size(); ++source)
        levels.inputs[source] = throughStrip(sources[source], desk.inputs[source]);
    for (size_t sink = 0; sink < desk.outputs.size(); ++sink)
        levels.outputs[sink] = throughStrip(mixed(levels.inputs, desk.mixer[sink]), desk.outputs[sink]);
    return levels;
}

QByteArray levelDatagram(const Levels &levels)
{
    QByteArray datagram;
    datagram.append(char(0x81));
    datagram.append(2, '\0');
    for (int source = 0; source <= 8; ++source) // the tone generator has no byte of its own
        datagram.append(levelByte(levels.inputs[size_t(source)]));
    for (const double level : levels.outputs)
        datagram.append(levelByte(level));
    return datagram;
}

} // namespace sim
