// Voice cues replaced by a recording of the user's and by the default one.

#include "devhost/tour/areas.h"
#include "devhost/tour/file_dialogs.h"
#include "devhost/tour/guide.h"
#include "devhost/tour/hands.h"
#include "devhost/tour/test_tone.h"

#include <QDir>
#include <QFileDialog>
#include <QJsonArray>
#include <QJsonObject>
#include <QPushButton>

namespace devhost::tour {

namespace {

constexpr int ToneSeconds = 8; // long enough to see the progress bar on its way

QPushButton *closeButton(const Guide &guide)
{
    const QWidget *dialog = guide.windowTitled(QStringLiteral("tarnKBX Voice Cue Update"));
    return dialog ? dialog->findChild<QPushButton *>(QStringLiteral("close_pushButton")) : nullptr;
}

/// Waits until the device has begun to fetch the file, or until it has ended.
Step transfer(Guide &guide, const QString &name, bool begun, const QString &picture)
{
    Step step;
    step.name = name;
    // The button is disabled exactly while the device fetches the file.
    step.missing = [&guide, begun] {
        const QPushButton *button = closeButton(guide);
        return unless(button && button->isEnabled() != begun,
                      begun ? QStringLiteral("no transfer has begun")
                            : QStringLiteral("the transfer has not ended"));
    };
    step.picture = picture;
    step.area = guide.areaOf([&guide]() -> QWidget * { return closeButton(guide); });
    return step;
}

Step done(Guide &guide, const QString &picture)
{
    return transfer(guide, QStringLiteral("all of it has been fetched"), false, picture);
}

Step closeDialog(Guide &guide, int cue)
{
    const Step step = guide.reread(QStringLiteral("close the dialog, and the device has a valid cue"),
                                   [&guide] { return hands::click(closeButton(guide)); });
    return alsoNeeds(step, [&guide, cue] {
        const QJsonValue status
            = guide.traffic().value(QStringLiteral("get"), QStringLiteral("/status/voice_cue"));
        return unless(status.toArray().at(cue).toObject().value(QLatin1String("valid")).toBool(),
                      QStringLiteral("the cue is not valid"));
    });
}

Steps userSteps(Guide &guide)
{
    const QString file = guide.newFile(QStringLiteral("tour-cue.wav"));
    Step ask;
    ask.name = QStringLiteral("load a recording of one's own");
    ask.act = [&guide, file] {
        if (!writeTestTone(file, ToneSeconds))
            return QStringLiteral("the recording cannot be written");
        return hands::click(guide.find(QStringLiteral("vc_pair_init_load_pushButton")));
    };
    ask.missing = [] { return unless(fileDialog(), QStringLiteral("no file dialog opens")); };
    ask.picture = QStringLiteral("choose-recording");
    ask.area = guide.areaOf([]() -> QWidget * { return fileDialog(); });
    Step choose;
    choose.name = QStringLiteral("choose it");
    choose.missing = untilChosen(file);
    return {
        ask, choose,
        transfer(guide, QStringLiteral("the device fetches it"), true, QStringLiteral("upload-under-way")),
        done(guide, QStringLiteral("upload-done")), closeDialog(guide, 0)};
}

Steps defaultSteps(Guide &guide)
{
    Step load = transfer(guide, QStringLiteral("load a default, and the device fetches it"), true, QString());
    load.act
        = [&guide] { return hands::click(guide.find(QStringLiteral("vc_connect_failed_def_pushButton"))); };
    return {load, done(guide, QStringLiteral("default-done")), closeDialog(guide, 3)};
}

} // namespace

Steps uploadSteps(Guide &guide)
{
    Steps steps{guide.page(QStringLiteral("go to the voice cues again"), CuePage)};
    steps.append(userSteps(guide));
    steps.append(guide.page(QStringLiteral("and once more"), CuePage));
    steps.append(defaultSteps(guide));
    return steps;
}

} // namespace devhost::tour
