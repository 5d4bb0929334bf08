#include "simulator/desk.h"

#include <QJsonArray>

namespace sim {

namespace {

struct Section
{
    const char *name;
    int channels;
};

constexpr Section inputSections[] = {{"dante_rx", 4}, {"usb_playback", 2}, {"bt_sink", 2}, {"voice_cue", 1}};
constexpr Section outputSections[] = {{"dante_tx", 4}, {"usb_record", 2}, {"bt_source", 1}};

Strip stripOf(const QJsonObject &channel)
{
    const QJsonObject limiter = channel.value(QStringLiteral("limiter")).toObject();
    return {channel.value(QStringLiteral("gain")).toDouble(), channel.value(QStringLiteral("mute")).toBool(),
            limiter.value(QStringLiteral("enable")).toBool(),
            limiter.value(QStringLiteral("threshold")).toDouble()};
}

template <size_t Sections, size_t Strips>
void readStrips(const QJsonObject &dsp, const Section (&sections)[Sections],
                std::array<Strip, Strips> *strips)
{
    size_t strip = 0;
    for (const Section &section : sections) {
        const QJsonArray channels = dsp.value(QLatin1String(section.name)).toArray();
        for (int channel = 0; channel < section.channels; ++channel)
            strips->at(strip++) = stripOf(channels.at(channel).toObject());
    }
}

} // namespace

Desk deskOf(const ParameterTree &tree)
{
    const QJsonObject dsp = tree.value(QStringLiteral("/preset/dsp")).toObject();
    Desk desk;
    readStrips(dsp, inputSections, &desk.inputs);
    readStrips(dsp, outputSections, &desk.outputs);
    const QJsonArray rows = dsp.value(QStringLiteral("mixer")).toArray();
    for (int sink = 0; sink < sinkCount; ++sink) {
        const QJsonArray row = rows.at(sink).toArray();
        for (int source = 0; source < sourceCount; ++source)
            desk.mixer[size_t(sink)][size_t(source)] = row.at(source).toDouble(silenceDb);
    }
    return desk;
}

} // namespace sim
