// The host's own windows beside its list and log.

#include "devhost/device_table_model.h"
#include "devhost/device_view.h"
#include "devhost/host_window.h"
#include "devhost/tour/areas.h"
#include "devhost/tour/guide.h"
#include "devhost/tour/hands.h"

#include <QApplication>
#include <QCheckBox>
#include <QHeaderView>
#include <QMenuBar>

namespace devhost::tour {

namespace {

/// Opens a window with an entry of the menus, pictures it and closes it with Escape.
Steps visit(Guide &guide, const QStringList &path, const QString &title, const QString &picture)
{
    Step open;
    open.name = QStringLiteral("the host shows %1").arg(title);
    open.act = [&guide, path] { return hands::chooseMenu(guide.window()->menuBar(), path); };
    open.missing = [&guide, title] {
        return unless(guide.windowTitled(title), QStringLiteral("no such window opens"));
    };
    open.picture = picture;
    open.area = guide.titledArea(title);
    return {open, guide.escape(title)};
}

Steps columnMenu(Guide &guide)
{
    Step ask;
    ask.name = QStringLiteral("the list of devices offers its columns");
    ask.act = [&guide] {
        return hands::askForMenu(guide.deviceView()->horizontalHeader()->viewport(), {150, 10});
    };
    ask.missing = [] { return unless(QApplication::activePopupWidget(), QStringLiteral("no menu opens")); };
    ask.picture = QStringLiteral("host-columns");
    ask.area = [&guide] { return guide.window()->frameGeometry(); }; // raised it would cover its menu
    Step leave;
    leave.name = QStringLiteral("leave them as they are");
    leave.act = [] { return hands::press(QApplication::activePopupWidget(), Qt::Key_Escape); };
    leave.missing
        = [] { return unless(!QApplication::activePopupWidget(), QStringLiteral("the menu stays")); };
    return {ask, leave};
}

Step refuse(Guide &guide)
{
    Step step = guide.heard(QStringLiteral("a change that the device refuses is told of"), [&guide] {
        return hands::check(guide.find<QCheckBox>(QStringLiteral("identify_checkBox")), true);
    });
    step.missing = [&guide] {
        const QModelIndex row = guide.deviceRow();
        const QString status = row.sibling(row.row(), DeviceTableModel::Status).data().toString();
        return unless(status.contains(DeviceTableModel::tr("%1 refused").arg(1)),
                      QStringLiteral("the list says \"%1\"").arg(status));
    };
    step.picture = QStringLiteral("host-refused");
    step.area = guide.areaOf([&guide] { return guide.window(); });
    return step;
}

} // namespace

Steps hostSteps(Guide &guide)
{
    const QString help = QStringLiteral("Help");
    return visit(guide, {QStringLiteral("Device"), QStringLiteral("Simulated Faults...")},
                 QStringLiteral("Simulated Faults"), QStringLiteral("host-faults"))
        + visit(guide, {help, QStringLiteral("Keyboard")}, QStringLiteral("Keyboard"),
                QStringLiteral("host-keys"))
        + visit(guide, {help, QStringLiteral("About")}, QStringLiteral("About"), QStringLiteral("host-about"))
        + columnMenu(guide);
}

Steps refusalSteps(Guide &guide)
{
    const QString faults = QStringLiteral("/faults/refuse");
    return Steps{guide.ordered(QStringLiteral("have the device refuse changes"), faults,
                               QStringLiteral("set:*")),
                 refuse(guide)}
    + visit(guide, {QStringLiteral("Device"), QStringLiteral("Refused Changes...")},
            QStringLiteral("Refused by"), QStringLiteral("host-refusals"))
        + Steps{guide.ordered(QStringLiteral("have it take them again"), faults, QString()),
                guide.refresh(QStringLiteral("refresh, and the editor shows what the device kept"))};
}

} // namespace devhost::tour
