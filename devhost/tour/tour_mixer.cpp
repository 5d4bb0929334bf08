// The mixer with its tone generator, seen on the output meters, and the metering group. No block window is
// open where the editor is pictured: they stay above it.

#include "devhost/tour/areas.h"
#include "devhost/tour/dsp_places.h"
#include "devhost/tour/guide.h"
#include "devhost/tour/hands.h"

#include <QCheckBox>
#include <QJsonArray>
#include <QJsonObject>

namespace devhost::tour {

namespace {

constexpr int Sources = 10;
constexpr int Sinks = 7;
constexpr int ToneGen = 9; // source
constexpr int NetTx2 = 1; // sink and strip
constexpr double AudibleDb = -60.0;

const QLatin1String MixerPath("/preset/dsp/mixer");
const QLatin1String TonePath("/system/function_gen/");
const QLatin1String MeteringPath("/system/metering");
const QLatin1String OtherGroup("239.255.77.33");

bool allDialsAtLowest(const Guide &guide)
{
    for (int source = 0; source < Sources; ++source) {
        for (int sink = 0; sink < Sinks; ++sink) {
            const QWidget *dial = dialOf(guide, source, sink);
            if (!dial || dial->property("val") != SilentDb)
                return false;
        }
    }
    return true;
}

QString missingOnMeter(const Guide &guide, double least, double most)
{
    const double level = meterOf(faderOf(guide, netTx(), NetTx2));
    return unless(level >= least && level <= most, QStringLiteral("Dante Tx 2 shows %1 dB").arg(level));
}

Step clear(Guide &guide)
{
    Step step = guide.confirmed(
        QStringLiteral("clear the mixer, and the outputs fall silent"),
        [&guide] {
            return hands::click(partOf<QWidget>(guide, mixer(), QStringLiteral("reset_pushButton"), 0));
        },
        MixerPath);
    step = alsoNeeds(step, [&guide] {
        if (!allDialsAtLowest(guide))
            return QStringLiteral("not every dial shows -100 dB");
        return missingOnMeter(guide, SilentDb, SilentDb);
    });
    step.picture = QStringLiteral("mixer-cleared");
    step.area = guide.titledArea(mixer().title);
    return step;
}

Step tone(Guide &guide, const QString &name, const QString &box, int value, const QString &parameter)
{
    return guide.confirmed(
        name,
        [&guide, box, value] {
            return hands::enter(partOf<QWidget>(guide, mixer(), box, 0), QString::number(value));
        },
        TonePath + parameter, value);
}

Step toneOn(Guide &guide)
{
    return guide.confirmed(
        QStringLiteral("switch the tone generator on"),
        [&guide] {
            return hands::check(partOf<QCheckBox>(guide, mixer(), QStringLiteral("tone_gen_en_checkBox"), 0),
                                true);
        },
        TonePath + QStringLiteral("enable"), true);
}

Step turnDial(Guide &guide)
{
    Step step = guide.confirmed(
        QStringLiteral("turn the dial of Tone Gen to Net TX 2, and that meter follows"),
        [&guide] {
            QWidget *dial = dialOf(guide, ToneGen, NetTx2);
            return hands::drag(dial, dial ? dial->rect().center() : QPoint(), {0, -166});
        },
        MixerPath);
    step = alsoNeeds(step, [&guide] {
        const QJsonArray rows = guide.traffic().value(QStringLiteral("set"), MixerPath).toArray();
        const double level = rows.at(NetTx2).toArray().at(ToneGen).toDouble(SilentDb);
        if (level <= SilentDb || level != dialOf(guide, ToneGen, NetTx2)->property("val"))
            return QStringLiteral("the device has not confirmed the level that the dial shows");
        return missingOnMeter(guide, AudibleDb, 20);
    });
    step.picture = QStringLiteral("dial-turned");
    step.area = guide.titledArea(mixer().title);
    return step;
}

Step seeOutput(Guide &guide)
{
    Step step;
    step.name = QStringLiteral("no other output of that editor sounds");
    step.missing = [&guide] {
        const double level = meterOf(faderOf(guide, netTx(), 0));
        return unless(level <= SilentDb, QStringLiteral("Dante Tx 1 shows %1 dB").arg(level));
    };
    step.picture = QStringLiteral("output-follows");
    step.area = guide.titledArea(netTx().title);
    return step;
}

Step moveGroup(Guide &guide)
{
    Step step = guide.confirmed(
        QStringLiteral("move the levels to another multicast group"),
        [&guide] {
            return guide.enterAndApply(QStringLiteral("multicast_metering_ip_lineEdit"), OtherGroup,
                                       QStringLiteral("multicast_metering_apply_pushButton"));
        },
        MeteringPath);
    step = alsoNeeds(step, [&guide] {
        const QJsonObject now = guide.traffic().value(QStringLiteral("set"), MeteringPath).toObject();
        return unless(now.value(QLatin1String("ip")) == QJsonValue(OtherGroup),
                      QStringLiteral("the device has not confirmed the new group"));
    });
    step.picture = QStringLiteral("metering-group");
    return step;
}

Step followOnNewGroup(Guide &guide)
{
    const Step step = tone(guide, QStringLiteral("a softer tone shows on the meter through the new group"),
                           QStringLiteral("tone_gen_level_spinBox"), -90, QStringLiteral("amplitude"));
    return alsoNeeds(step, [&guide] { return missingOnMeter(guide, SilentDb + 1, AudibleDb); });
}

} // namespace

Steps mixerSteps(Guide &guide)
{
    return {clear(guide),
            tone(guide, QStringLiteral("set the tone's frequency"), QStringLiteral("tone_gen_freq_spinBox"),
                 1250, QStringLiteral("frequency")),
            tone(guide, QStringLiteral("set the tone's level"), QStringLiteral("tone_gen_level_spinBox"), -12,
                 QStringLiteral("amplitude")),
            toneOn(guide),
            turnDial(guide),
            seeOutput(guide)};
}

Steps meteringSteps(Guide &guide)
{
    return {guide.page(QStringLiteral("go to the network settings"), ConfigPage),
            moveGroup(guide),
            guide.page(QStringLiteral("go back to the diagram"), DspPage),
            openAgain(guide, netTx()),
            openAgain(guide, mixer()),
            followOnNewGroup(guide),
            guide.escape(netTx().title),
            guide.escape(mixer().title)};
}

} // namespace devhost::tour
