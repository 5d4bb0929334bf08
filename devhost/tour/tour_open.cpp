// Opening, identifying, refreshing and closing.

#include "devhost/device_view.h"
#include "devhost/host_window.h"
#include "devhost/known_device.h"
#include "devhost/tour/areas.h"
#include "devhost/tour/guide.h"
#include "devhost/tour/hands.h"

namespace devhost::tour {

namespace {

constexpr int QuietPolls = 2; // by which time the poll's rhythm shows in the recorded messages

const QLatin1String IdentifyPath("/control/identify");

Step find(Guide &guide)
{
    Step step;
    step.name = QStringLiteral("find the first device");
    step.missing = [&guide] {
        return unless(guide.device() && guide.device()->isPresent(),
                      QStringLiteral("no device has announced itself"));
    };
    step.picture = QStringLiteral("host");
    step.area = guide.areaOf([&guide] { return guide.window(); });
    return step;
}

Step open(Guide &guide)
{
    Step step = guide.heard(QStringLiteral("open its editor with a double-click"), [&guide] {
        const DeviceView *view = guide.deviceView();
        QString why = hands::doubleClick(view->viewport(), view->visualRect(guide.deviceRow()).center());
        guide.setReplyTimeout(PatientTimeout);
        return why;
    });
    step.missing = [&guide] {
        return unless(guide.editor() && guide.editor()->isVisible(), QStringLiteral("no editor is shown"));
    };
    return step;
}

Step live(Guide &guide)
{
    Step step;
    step.name = QStringLiteral("the editor comes alive");
    step.missing = [&guide] { return guide.missingUntilReread(); };
    step.area = guide.editorArea();
    return step;
}

Step watchPolls(Guide &guide)
{
    Step step = guide.heard(QStringLiteral("left alone, it polls the device"));
    step.missing = [&guide] {
        return unless(guide.traffic().count(QStringLiteral("get"), QStringLiteral("/status/usb"))
                          > QuietPolls,
                      QStringLiteral("too few polls"));
    };
    return step;
}

} // namespace

Steps openSteps(Guide &guide)
{
    const QString box = QStringLiteral("identify_checkBox");
    Step identify = guide.set(QStringLiteral("identify on"), box, true, IdentifyPath, true);
    identify.picture = QStringLiteral("identify");
    Step alive = live(guide);
    alive.picture = QStringLiteral("device-config");
    return {find(guide),
            open(guide),
            alive,
            watchPolls(guide),
            identify,
            guide.set(QStringLiteral("identify off"), box, false, IdentifyPath, false),
            guide.refresh(QStringLiteral("refresh reads the device anew"))};
}

Steps openAgainSteps(Guide &guide)
{
    return {open(guide), live(guide)};
}

Steps closeSteps(Guide &guide)
{
    Step log;
    log.name = QStringLiteral("the host's log shows it all");
    log.picture = QStringLiteral("host-log");
    log.area = guide.areaOf([&guide] { return guide.window(); });
    Step close = guide.confirmed(
        QStringLiteral("close the editor"),
        [&guide] { return hands::click(guide.find(QStringLiteral("close_pushButton"))); }, IdentifyPath,
        false);
    close = alsoNeeds(
        close, [&guide] { return unless(!guide.session(), QStringLiteral("the editor is still open")); });
    return {log, close};
}

} // namespace devhost::tour
