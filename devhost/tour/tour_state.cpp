// Snapshots and device presets: saved, everything changed, brought back, compared with what the device had.

#include "devhost/host_window.h"
#include "devhost/tour/areas.h"
#include "devhost/tour/file_dialogs.h"
#include "devhost/tour/guide.h"
#include "devhost/tour/hands.h"
#include "devhost/tour/other_values.h"

#include <QAbstractButton>
#include <QApplication>
#include <QDir>
#include <QFileInfo>
#include <QMenuBar>
#include <QSharedPointer>

namespace devhost::tour {

namespace {

using Saved = QSharedPointer<DeviceProbe::Values>;

constexpr int PresetNumber = 3;

QStringList sections()
{
    QStringList paths;
    for (const char *name :
         {"network", "notifications", "metering", "function_gen", "usb", "bluetooth", "voice_cue"})
        paths.append(QStringLiteral("/system/%1").arg(QLatin1String(name)));
    for (const char *name :
         {"dante_rx", "dante_tx", "usb_playback", "usb_record", "bt_sink", "bt_source", "voice_cue"})
        paths.append(QStringLiteral("/preset/dsp/%1").arg(QLatin1String(name)));
    for (int row = 0; row < 7; ++row)
        paths.append(QStringLiteral("/preset/dsp/mixer/%1").arg(row));
    return paths;
}

/// What a device preset holds of them.
QStringList presetSections()
{
    return sections().filter(QStringLiteral("/preset/")) << QStringLiteral("/system/function_gen");
}

/// Asks the device for @p paths; the guide's probe holds the answers afterwards.
Step look(Guide &guide, const QString &name, const QStringList &paths)
{
    Step step;
    step.name = name;
    step.act = [&guide, paths] {
        guide.probe().read(*guide.device(), paths);
        return QString();
    };
    step.missing
        = [&guide] { return unless(guide.probe().isDone(), QStringLiteral("the device has not answered")); };
    return step;
}

Step remember(Guide &guide, const QString &name, const QStringList &paths, const Saved &saved)
{
    return alsoNeeds(look(guide, name, paths), [&guide, saved] {
        *saved = guide.probe().values();
        return QString();
    });
}

QString differences(const DeviceProbe::Values &now, const DeviceProbe::Values &saved)
{
    QStringList paths;
    for (auto it = saved.cbegin(); it != saved.cend(); ++it) {
        if (now.value(it.key()) != it.value())
            paths.append(it.key());
    }
    return paths.join(QStringLiteral(", "));
}

Step compare(Guide &guide, const QString &name, const QStringList &paths, const Saved &saved)
{
    return alsoNeeds(look(guide, name, paths), [&guide, saved] {
        const QString other = differences(guide.probe().values(), *saved);
        return unless(other.isEmpty(), QStringLiteral("not as saved: %1").arg(other));
    });
}

Step changeEverything(Guide &guide, const QString &name, const Saved &saved)
{
    const Saved changed(new DeviceProbe::Values);
    Step step;
    step.name = name;
    step.act = [&guide, saved, changed] {
        for (auto it = saved->cbegin(); it != saved->cend(); ++it)
            changed->insert(it.key(), otherValue(it.value()));
        guide.probe().write(*guide.device(), *changed);
        return QString();
    };
    step.missing = [&guide, saved, changed] {
        if (!guide.probe().isDone())
            return QStringLiteral("the device has not taken every change");
        const QString refused = differences(guide.probe().values(), *changed);
        return unless(refused.isEmpty(), QStringLiteral("not changed: %1").arg(refused));
    };
    return step;
}

QString chooseDeviceMenu(const Guide &guide, const QStringList &path)
{
    return hands::chooseMenu(guide.window()->menuBar(), QStringList{QStringLiteral("Device")} + path);
}

Steps saveSteps(Guide &guide, const QString &file)
{
    Step ask;
    ask.name = QStringLiteral("save a snapshot");
    ask.act = [&guide] { return chooseDeviceMenu(guide, {QStringLiteral("Save Snapshot...")}); };
    ask.missing = [] { return unless(fileDialog(), QStringLiteral("no file dialog opens")); };
    Step answer;
    answer.name = QStringLiteral("name its file");
    answer.missing = untilChosen(file);
    answer = alsoNeeds(
        answer, [file] { return unless(QFileInfo(file).size() > 0, QStringLiteral("there is no file")); });
    return {ask, answer};
}

/// In the box that asks whether to overwrite the device; null when there is none.
QAbstractButton *overwriteButton()
{
    const QWidget *box = QApplication::activeModalWidget();
    return box ? box->findChild<QAbstractButton *>(QStringLiteral("overwriteButton")) : nullptr;
}

Step overwrite(Guide &guide)
{
    Step step = guide.confirmed(
        QStringLiteral("overwrite, and the device confirms all of it"),
        [] { return hands::click(overwriteButton()); }, sections().last());
    step = alsoNeeds(step, [&guide] {
        for (const QString &path : sections()) {
            QString why = guide.missingConfirmation(path);
            if (!why.isEmpty())
                return why;
        }
        const QWidget *frame = guide.find(QStringLiteral("plugin_frame"));
        return unless(frame && frame->isEnabled(), QStringLiteral("the editor is not enabled"));
    });
    step.picture = QStringLiteral("snapshot-loaded");
    return step;
}

Steps loadSteps(Guide &guide, const QString &file)
{
    Step ask;
    ask.name = QStringLiteral("load the snapshot");
    ask.act = [&guide] { return chooseDeviceMenu(guide, {QStringLiteral("Load Snapshot...")}); };
    ask.missing = [] { return unless(fileDialog(), QStringLiteral("no file dialog opens")); };
    Step answer;
    answer.name = QStringLiteral("choose its file, and be asked which device to overwrite");
    answer.missing = untilChosen(file);
    answer = alsoNeeds(answer, [] { return unless(overwriteButton(), QStringLiteral("nobody asks")); });
    answer.picture = QStringLiteral("overwrite");
    answer.area = guide.areaOf([] { return overwriteButton(); });
    return {ask, answer, overwrite(guide)};
}

Step recallPreset(Guide &guide)
{
    const Step step = guide.confirmed(
        QStringLiteral("recall the preset, and the editor reads the device anew"),
        [&guide] {
            return chooseDeviceMenu(
                guide, {QStringLiteral("Recall Preset"), QStringLiteral("Preset %1").arg(PresetNumber)});
        },
        QStringLiteral("/control/load_preset"));
    return alsoNeeds(step, [&guide] { return guide.missingUntilReread(); });
}

/// In the box that asks whether to store a preset; null when there is none.
QAbstractButton *storeButton()
{
    const QWidget *box = QApplication::activeModalWidget();
    return box ? box->findChild<QAbstractButton *>(QStringLiteral("storeButton")) : nullptr;
}

Steps storePreset(Guide &guide)
{
    Step ask;
    ask.name = QStringLiteral("store a preset, and be asked about it");
    ask.act = [&guide] {
        return chooseDeviceMenu(
            guide, {QStringLiteral("Store Preset"), QStringLiteral("Preset %1").arg(PresetNumber)});
    };
    ask.missing = [] { return unless(storeButton(), QStringLiteral("nobody asks")); };
    const Step store = guide.confirmed(
        QStringLiteral("say yes, and the editor reads the device anew"),
        [] { return hands::click(storeButton()); }, QStringLiteral("/control/save_preset"));
    return {ask, alsoNeeds(store, [&guide] { return guide.missingUntilReread(); })};
}

Steps snapshotSteps(Guide &guide)
{
    const Saved saved(new DeviceProbe::Values);
    const QString file = guide.newFile(QStringLiteral("tour-snapshot.xml"));
    Steps steps{remember(guide, QStringLiteral("ask the device for every section"), sections(), saved)};
    steps.append(saveSteps(guide, file));
    steps.append(changeEverything(guide, QStringLiteral("change every section of the device"), saved));
    Step refresh = guide.refresh(QStringLiteral("refresh, and the editor shows it"));
    refresh.picture = QStringLiteral("everything-changed");
    steps.append(refresh);
    steps.append(loadSteps(guide, file));
    steps.append(compare(guide, QStringLiteral("the device has every section as saved"), sections(), saved));
    return steps;
}

Steps presetSteps(Guide &guide)
{
    const Saved saved(new DeviceProbe::Values);
    return Steps{remember(guide, QStringLiteral("ask the device for its sound"), presetSections(), saved)}
    + storePreset(guide)
        + Steps{
            changeEverything(guide, QStringLiteral("change all of its sound"), saved),
            recallPreset(guide),
            compare(guide, QStringLiteral("the device sounds as stored"), presetSections(), saved),
        };
}

} // namespace

Steps stateSteps(Guide &guide)
{
    Steps steps = snapshotSteps(guide);
    steps.append(presetSteps(guide));
    steps.append(uploadSteps(guide));
    return steps;
}

} // namespace devhost::tour
