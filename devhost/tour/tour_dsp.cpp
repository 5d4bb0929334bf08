// The block diagram and the strip editors; the mixer's steps are in tour_mixer.cpp.

#include "devhost/tour/areas.h"
#include "devhost/tour/dsp_places.h"
#include "devhost/tour/guide.h"
#include "devhost/tour/hands.h"

#include <QPushButton>

namespace devhost::tour {

namespace {

const QLatin1String RxGain("/preset/dsp/dante_rx/0/gain");
const QLatin1String RxMute("/preset/dsp/dante_rx/0/mute");

Step hover(Guide &guide)
{
    Step step;
    step.name = QStringLiteral("hover over the mixer block");
    step.act = [&guide] { return hands::hoverWindow(guide.scene(), placeInScene(guide, mixer())); };
    step.picture = QStringLiteral("diagram-hovered");
    step.area = guide.editorArea();
    return step;
}

Step moveFader(Guide &guide)
{
    Step step = guide.confirmed(
        QStringLiteral("move the fader of Dante Rx 1"),
        [&guide] {
            QWidget *fader = faderOf(guide, netRx(), 0);
            return hands::drag(fader, fader ? QPoint(fader->width() / 4, fader->height() / 2) : QPoint(),
                               {0, 24});
        },
        RxGain);
    step = alsoNeeds(step, [&guide] {
        const QJsonValue gain = guide.traffic().value(QStringLiteral("set"), RxGain);
        return unless(gain.isDouble() && gain.toDouble() == faderOf(guide, netRx(), 0)->property("gain"),
                      QStringLiteral("the device has not confirmed the gain that the fader shows"));
    });
    step.picture = QStringLiteral("fader-moved");
    step.area = guide.titledArea(netRx().title);
    return step;
}

Step mute(Guide &guide, bool muted)
{
    Step step = guide.confirmed(
        muted ? QStringLiteral("mute Dante Rx 1, and its meter falls")
              : QStringLiteral("unmute it, and its meter is back"),
        [&guide] {
            return hands::click(
                partOf<QPushButton>(guide, netRx(), QStringLiteral("digital_mute_pushButton"), 0));
        },
        RxMute, muted);
    step = alsoNeeds(step, [&guide, muted] {
        const double level = meterOf(faderOf(guide, netRx(), 0));
        return unless((level <= SilentDb) == muted, QStringLiteral("its meter shows %1 dB").arg(level));
    });
    if (muted) {
        step.picture = QStringLiteral("muted");
        step.area = guide.titledArea(netRx().title);
    }
    return step;
}

} // namespace

Steps dspSteps(Guide &guide)
{
    Steps steps{guide.page(QStringLiteral("show the block diagram"), DspPage, QStringLiteral("diagram")),
                hover(guide)};
    for (const Block &block : blocks())
        steps.append(openBlock(guide, block));
    steps.append({moveFader(guide), mute(guide, true), mute(guide, false)});
    steps.append(mixerSteps(guide));
    for (const Block &block : blocks())
        steps.append(guide.escape(block.title));
    steps.append(meteringSteps(guide));
    return steps;
}

} // namespace devhost::tour
