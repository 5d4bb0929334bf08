// The host's own windows beside its list and log.

#include "devhost/host_window.h"
#include "devhost/tour/areas.h"
#include "devhost/tour/guide.h"
#include "devhost/tour/hands.h"

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

} // namespace

Steps hostSteps(Guide &guide)
{
    const QString help = QStringLiteral("Help");
    return visit(guide, {QStringLiteral("Device"), QStringLiteral("Simulated Faults...")},
                 QStringLiteral("Simulated Faults"), QStringLiteral("host-faults"))
        + visit(guide, {help, QStringLiteral("Keyboard")}, QStringLiteral("Keyboard"),
                QStringLiteral("host-keys"))
        + visit(guide, {help, QStringLiteral("About")}, QStringLiteral("About"),
                QStringLiteral("host-about"));
}

} // namespace devhost::tour
