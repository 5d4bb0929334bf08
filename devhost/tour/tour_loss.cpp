// A device that does not answer, is lost and comes back, is reset, and restarts.

#include "devhost/device_table_model.h"
#include "devhost/host_window.h"
#include "devhost/known_device.h"
#include "devhost/tour/areas.h"
#include "devhost/tour/guide.h"
#include "devhost/tour/hands.h"

#include <QApplication>
#include <QMessageBox>
#include <QPushButton>

namespace devhost::tour {

namespace {

const QLatin1String TimedOut("Communications with the device have timed out.");
const QLatin1String Failed("Communications with the device have failed.");
const QLatin1String UsbStatus("/status/usb");

QMessageBox *messageBox()
{
    return qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
}

bool isAsked(const QString &text)
{
    return messageBox() && messageBox()->text().contains(text);
}

QString answer(QMessageBox::StandardButton button)
{
    return hands::click(messageBox() ? messageBox()->button(button) : nullptr);
}

/// Waits for a box with that text.
Step question(Guide &guide, const QString &name, const std::function<QString()> &act, const QString &text,
              const QString &picture = QString())
{
    Step step = guide.heard(name, act);
    step.missing = [text] { return unless(isAsked(text), QStringLiteral("no box says \"%1\"").arg(text)); };
    step.picture = picture;
    step.area = guide.areaOf([]() -> QWidget * { return messageBox(); });
    return step;
}

QString missingUntilClosed(const Guide &guide)
{
    return unless(!guide.session() && !messageBox(), QStringLiteral("the editor is still open"));
}

Step closing(Guide &guide, const QString &name, QMessageBox::StandardButton button)
{
    Step step = guide.heard(name, [button] { return answer(button); });
    step.missing = [&guide] { return missingUntilClosed(guide); };
    return step;
}

/// From now on its replies are lost, while it goes on announcing itself.
Step fallSilent(Guide &guide, const QString &name, const QString &picture)
{
    const auto act = [&guide] {
        guide.setReplyTimeout(UsualTimeout);
        guide.order(QStringLiteral("/faults/drop"), 1);
        return QString();
    };
    return question(guide, name, act, TimedOut, picture);
}

Step comeBack(Guide &guide)
{
    Step step = guide.heard(QStringLiteral("the device is back and answers"), [&guide] {
        guide.order(QStringLiteral("/faults/drop"), 0);
        guide.order(QStringLiteral("/present"), true);
        guide.probe().read(*guide.device(), {UsbStatus});
        return QString();
    });
    step.missing = [&guide] {
        return unless(guide.device()->isPresent() && guide.probe().isDone(),
                      QStringLiteral("the device does not answer"));
    };
    step.area = guide.areaOf([&guide] { return guide.window(); });
    return step;
}

Step retry(Guide &guide)
{
    Step step = guide.heard(QStringLiteral("Retry, and the editor is live again"), [&guide] {
        guide.setReplyTimeout(PatientTimeout);
        return answer(QMessageBox::Retry);
    });
    step.missing = [&guide] {
        return unless(!messageBox() && guide.traffic().count(QStringLiteral("get"), UsbStatus) > 1,
                      QStringLiteral("no poll has been answered"));
    };
    return step;
}

Steps timeoutSteps(Guide &guide)
{
    return {fallSilent(guide, QStringLiteral("the device answers nothing, and the editor asks what to do"),
                       QStringLiteral("timed-out")),
            comeBack(guide),
            retry(guide),
            fallSilent(guide, QStringLiteral("it answers nothing once more"), QString()),
            closing(guide, QStringLiteral("Cancel closes the editor"), QMessageBox::Cancel),
            comeBack(guide)};
}

Step loseDevice(Guide &guide)
{
    const auto act = [&guide] {
        guide.order(QStringLiteral("/present"), false);
        return QString();
    };
    return question(guide, QStringLiteral("the device is gone, and the editor says so"), act, Failed,
                    QStringLiteral("device-lost"));
}

Steps lostSteps(Guide &guide)
{
    Step close = closing(guide, QStringLiteral("the editor closes, and the device is listed as lost"),
                         QMessageBox::Ok);
    close = alsoNeeds(close, [&guide] {
        const QModelIndex row = guide.deviceRow();
        const QString presence = row.sibling(row.row(), DeviceTableModel::Presence).data().toString();
        return unless(presence == DeviceTableModel::tr("Lost"),
                      QStringLiteral("it is listed as \"%1\"").arg(presence));
    });
    close.picture = QStringLiteral("listed-as-lost");
    close.area = guide.areaOf([&guide] { return guide.window(); });
    Step back = comeBack(guide);
    back.picture = QStringLiteral("device-back");
    return {loseDevice(guide), close, back};
}

/// A command of the device panel that asks first and closes the editor when it is done.
Steps panelCommand(Guide &guide, const QString &name, const QString &button, const QString &warning,
                   const QString &path)
{
    const auto ask = [&guide, button] { return hands::click(guide.find(button)); };
    const Step confirmed = guide.confirmed(
        QStringLiteral("%1, which the device confirms, and the editor closes").arg(name),
        [] { return answer(QMessageBox::Ok); }, path);
    return {question(guide, QStringLiteral("%1, and be asked first").arg(name), ask, warning, name),
            alsoNeeds(confirmed, [&guide] { return missingUntilClosed(guide); })};
}

Step seeFactoryName(Guide &guide)
{
    Step step;
    step.name = QStringLiteral("it has its first name again");
    step.missing = [&guide] {
        const QWidget *field = guide.find(QStringLiteral("bt_friendly_name_lineEdit"));
        const QString name = field ? field->property("text").toString() : QString();
        return unless(!name.isEmpty() && name != NewName, QStringLiteral("it is named \"%1\"").arg(name));
    };
    return step;
}

} // namespace

Steps lossSteps(Guide &guide)
{
    Steps steps = timeoutSteps(guide) + openAgainSteps(guide) + lostSteps(guide) + openAgainSteps(guide);
    steps += panelCommand(guide, QStringLiteral("reset"), QStringLiteral("factory_reset_pushButton"),
                          QStringLiteral("factory\nreset"), QStringLiteral("/control/defaults"));
    steps += openAgainSteps(guide);
    steps += seeFactoryName(guide);
    steps += panelCommand(guide, QStringLiteral("reboot"), QStringLiteral("reboot_pushButton"),
                          QStringLiteral("reboot\n the device"), QStringLiteral("/control/reboot"));
    return steps;
}

} // namespace devhost::tour
