#include "devhost/window_menu.h"

#include "devhost/editor_sessions.h"
#include "devhost/known_device.h"
#include "devhost/window_memory.h"

#include <QApplication>
#include <QScreen>
#include <QStyle>

#include <algorithm>

namespace devhost {

namespace {

constexpr int Shift = 32; // between windows that lie on each other, so that each shows its title
constexpr int LongestTitle = 80;

bool isListed(const QWidget *window)
{
    const Qt::WindowType type = window->windowType();
    return window->isVisible() && !window->isModal() && !window->windowTitle().isEmpty()
        && (type == Qt::Window || type == Qt::Dialog);
}

void bringForward(QWidget *window)
{
    window->setWindowState(window->windowState() & ~Qt::WindowMinimized);
    window->raise();
    window->activateWindow();
}

/// What the window system draws around it.
QSize frameOf(const QWidget &window)
{
    return window.frameGeometry().size() - window.size();
}

/// How many of the windows lie on no other one.
int countBeside(const QList<QRect> &places)
{
    int count = 0;
    for (auto place = places.cbegin(); place != places.cend(); ++place)
        count += std::none_of(places.cbegin(), place,
                              [place](const QRect &earlier) { return earlier.intersects(*place); });
    return count;
}

} // namespace

QList<QRect> tiled(const QList<QSize> &sizes, const QRect &area)
{
    QList<QRect> places;
    QPoint at = area.topLeft();
    QPoint start = at;
    int rowHeight = 0;
    for (const QSize &size : sizes) {
        if (at.x() > start.x() && at.x() + size.width() > area.right() + 1) {
            at = {start.x(), at.y() + rowHeight};
            rowHeight = 0;
        }
        if (at.y() > start.y() && at.y() + size.height() > area.bottom() + 1) {
            start += QPoint(Shift, Shift);
            at = start;
            rowHeight = 0;
        }
        places.append(QRect(at, size));
        at.rx() += size.width();
        rowHeight = qMax(rowHeight, size.height());
    }
    return places;
}

WindowMenu::WindowMenu(const EditorSessions *sessions, QWidget *hostWindow)
    : QMenu(tr("&Window"), hostWindow)
    , m_sessions(sessions)
    , m_hostWindow(hostWindow)
    , m_tile(new QAction(tr("&Tile"), this))
{
    m_tile->setShortcut(QKeySequence(tr("Ctrl+T")));
    m_tile->setShortcutContext(Qt::ApplicationShortcut);
    connect(m_tile, &QAction::triggered, this, &WindowMenu::tile);
    addAction(m_tile);
    m_windows = addSeparator();
    connect(this, &QMenu::aboutToShow, this, &WindowMenu::fill);
    fill();
}

QList<QWidget *> WindowMenu::windows() const
{
    QList<QWidget *> windows;
    for (QWidget *window : QApplication::topLevelWidgets()) {
        if (window != m_hostWindow && isListed(window))
            windows.append(window);
    }
    std::sort(windows.begin(), windows.end(),
              [this](const QWidget *a, const QWidget *b) { return titleOf(a) < titleOf(b); });
    return windows;
}

QString WindowMenu::titleOf(const QWidget *window) const
{
    for (const QWidget *owner = ownerOf(window); owner; owner = ownerOf(owner)) {
        const QString device = m_sessions->deviceOf(owner);
        if (!device.isEmpty())
            return tr("%1: %2").arg(device, window->windowTitle());
    }
    return window->windowTitle();
}

void WindowMenu::fill()
{
    // Only the windows go: a menu disconnects an action that is taken out of it from all slots of the menu.
    qDeleteAll(actions().mid(actions().indexOf(m_windows) + 1));
    const QList<QWidget *> open = windows();
    for (QWidget *window : open) {
        QString title = titleOf(window);
        if (title.size() > LongestTitle)
            title = title.left(LongestTitle) + QChar(0x2026);
        QAction *action = addAction(title.replace(QLatin1Char('&'), QLatin1String("&&")));
        connect(action, &QAction::triggered, window, [window] { bringForward(window); });
        action->setCheckable(true);
        action->setChecked(window->isActiveWindow());
    }
    if (open.isEmpty())
        addAction(tr("No editor is open"))->setEnabled(false);
}

void WindowMenu::tile()
{
    const QList<QWidget *> open = windows();
    QList<QSize> sizes;
    QList<QSize> smallest;
    for (QWidget *window : open) {
        window->setWindowState(window->windowState() & ~(Qt::WindowMinimized | Qt::WindowMaximized));
        const QSize least = window->minimumSizeHint().expandedTo(window->minimumSize());
        sizes.append(window->frameGeometry().size());
        smallest.append(least.boundedTo(window->size()) + frameOf(*window));
    }
    const QRect area = m_hostWindow->screen()->availableGeometry();
    QList<QRect> places = tiled(sizes, area);
    const QList<QRect> closer = tiled(smallest, area);
    if (countBeside(closer) > countBeside(places))
        places = closer;
    for (int number = 0; number < open.size(); ++number) {
        open.at(number)->resize(places.at(number).size() - frameOf(*open.at(number)));
        open.at(number)->move(places.at(number).topLeft());
        open.at(number)->raise();
    }
    if (countBeside(places) < open.size())
        emit hasNoRoom(
            tr("Windows with a place of their own on this screen: %1 of %2. The others lie over them, "
               "a little lower and further right.")
                .arg(countBeside(places))
                .arg(open.size()));
}

} // namespace devhost
