#include "simulator/levels.h"

#include <QJsonArray>
#include <QStringList>

#include <cmath>

namespace sim {

namespace {

Strip stripOf(const QJsonObject &channel)
{
    const QJsonObject limiter = channel.value(QStringLiteral("limiter")).toObject();
    return {channel.value(QStringLiteral("gain")).toDouble(), channel.value(QStringLiteral("mute")).toBool(),
            limiter.value(QStringLiteral("enable")).toBool(),
            limiter.value(QStringLiteral("threshold")).toDouble()};
}

template <size_t Strips>
void readStrips(const QJsonObject &dsp, const QJsonObject &pushed, const QStringList &sections,
                std::array<Strip, Strips> *strips)
{
    auto strip = strips->begin();
    for (const QString &section : sections) {
        const QJsonArray channels = dsp.value(section).toArray();
        for (int channel = 0; channel < channels.size() && strip != strips->end(); ++channel, ++strip) {
            *strip = stripOf(channels.at(channel).toObject());
            const QJsonValue level = pushed.value(section).toArray().at(channel);
            if (level.isDouble())
                strip->pushed = level.toDouble();
        }
    }
}

double throughStrip(double level, const Strip &strip)
{
    if (strip.pushed)
        return *strip.pushed;
    if (strip.mute || level <= SilenceDb)
        return SilenceDb;
    const double amplified = level + strip.gain;
    const double limited = strip.limited ? qMin(amplified, strip.threshold) : amplified;
    return qBound(SilenceDb, limited, FullDb);
}

double mixed(const std::array<double, SourceCount> &inputs,
             const std::array<double, SourceCount> &crosspoints)
{
    double power = 0;
    for (size_t source = 0; source < inputs.size(); ++source) {
        if (inputs[source] > SilenceDb && crosspoints[source] > SilenceDb)
            power += std::pow(10.0, (inputs[source] + crosspoints[source]) / 10.0);
    }
    return power > 0 ? 10.0 * std::log10(power) : SilenceDb;
}

char levelByte(double level)
{
    return char(qint8(std::lround(level)));
}

} // namespace

Desk deskOf(const QJsonObject &dsp, const QJsonObject &pushed)
{
    Desk desk;
    readStrips(dsp, pushed,
               {QStringLiteral("dante_rx"), QStringLiteral("usb_playback"), QStringLiteral("bt_sink"),
                QStringLiteral("voice_cue")},
               &desk.inputs);
    readStrips(dsp, pushed,
               {QStringLiteral("dante_tx"), QStringLiteral("usb_record"), QStringLiteral("bt_source")},
               &desk.outputs);
    const QJsonArray rows = dsp.value(QStringLiteral("mixer")).toArray();
    for (int sink = 0; sink < SinkCount; ++sink) {
        const QJsonArray row = rows.at(sink).toArray();
        for (int source = 0; source < SourceCount; ++source)
            desk.mixer[size_t(sink)][size_t(source)] = row.at(source).toDouble(SilenceDb);
    }
    return desk;
}

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
