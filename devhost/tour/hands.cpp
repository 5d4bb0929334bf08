#include "devhost/tour/hands.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QContextMenuEvent>
#include <QDateTime>
#include <QKeyEvent>
#include <QMenu>
#include <QMenuBar>
#include <QMouseEvent>
#include <QPointer>
#include <QTabBar>
#include <QWindow>

#include <algorithm>

namespace devhost::tour::hands {

namespace {

constexpr int DragSteps = 12;

QString nameOf(const QWidget *widget)
{
    const QString name = widget->objectName();
    return name.isEmpty() ? QLatin1String(widget->metaObject()->className()) : name;
}

bool isBlocked(const QWidget *widget)
{
    const QWidget *modal = QApplication::activeModalWidget();
    const QWidget *window = widget->window();
    return modal && window != modal && !modal->isAncestorOf(window) && window->windowType() != Qt::Popup;
}

// By another page, another widget, or the edge of a scroll area.
bool isCovered(const QWidget *widget, const QPoint &at)
{
    const QWidget *window = widget->window();
    if (widget == window)
        return !widget->rect().contains(at);
    const QWidget *top = window->childAt(widget->mapTo(window, at));
    return top != widget && !widget->isAncestorOf(top);
}

QString obstacle(const QWidget *widget, const QPoint &at)
{
    if (!widget)
        return QStringLiteral("the widget is not there");
    if (!widget->isVisible() || isCovered(widget, at))
        return QStringLiteral("%1 is not to be seen").arg(nameOf(widget));
    if (!widget->isEnabled())
        return QStringLiteral("%1 is disabled").arg(nameOf(widget));
    if (isBlocked(widget))
        return QStringLiteral("%1 is behind a dialog").arg(nameOf(widget));
    return QString();
}

void send(QWindow *window, QEvent::Type type, const QPoint &at, Qt::MouseButton button,
          Qt::MouseButtons buttons)
{
    QMouseEvent event(type, at, at, window->mapToGlobal(at), button, buttons, Qt::NoModifier);
    event.setTimestamp(ulong(QDateTime::currentMSecsSinceEpoch()));
    QCoreApplication::sendEvent(window, &event);
}

/// The window that gets a widget's events, and a point of the widget in it.
struct Target
{
    QWindow *window;
    QPoint at;
};

Target targetOf(const QWidget *widget, const QPoint &at)
{
    Q_ASSERT(widget);
    const QWidget *native = widget->nativeParentWidget() ? widget->nativeParentWidget() : widget;
    if (widget->isWindow() || !native->windowHandle())
        native = widget->window();
    return {native->windowHandle(), widget == native ? at : widget->mapTo(native, at)};
}

void sendClick(QWindow *window, const QPoint &at)
{
    const QPointer<QWindow> alive(window);
    send(window, QEvent::MouseMove, at, Qt::NoButton, Qt::NoButton);
    send(window, QEvent::MouseButtonPress, at, Qt::LeftButton, Qt::LeftButton);
    if (alive)
        send(window, QEvent::MouseButtonRelease, at, Qt::LeftButton, Qt::NoButton);
}

void sendKey(QWidget *widget, Qt::Key key, Qt::KeyboardModifiers modifiers, const QString &text)
{
    const QPointer<QWidget> alive(widget);
    QKeyEvent down(QEvent::KeyPress, key, modifiers, text);
    QCoreApplication::sendEvent(widget, &down);
    if (!alive)
        return;
    QKeyEvent up(QEvent::KeyRelease, key, modifiers, text);
    QCoreApplication::sendEvent(widget, &up);
}

} // namespace

QString click(QWidget *widget)
{
    return click(widget, widget ? widget->rect().center() : QPoint());
}

QString click(QWidget *widget, const QPoint &at)
{
    QString why = obstacle(widget, at);
    if (!why.isEmpty())
        return why;
    const Target target = targetOf(widget, at);
    sendClick(target.window, target.at);
    return QString();
}

QString doubleClick(QWidget *widget, const QPoint &at)
{
    QString why = click(widget, at);
    if (!why.isEmpty())
        return why;
    const Target target = targetOf(widget, at);
    send(target.window, QEvent::MouseButtonDblClick, target.at, Qt::LeftButton, Qt::LeftButton);
    send(target.window, QEvent::MouseButtonRelease, target.at, Qt::LeftButton, Qt::NoButton);
    return QString();
}

QString drag(QWidget *widget, const QPoint &from, const QPoint &way)
{
    QString why = obstacle(widget, from);
    if (!why.isEmpty())
        return why;
    const Target target = targetOf(widget, from);
    send(target.window, QEvent::MouseButtonPress, target.at, Qt::LeftButton, Qt::LeftButton);
    for (int step = 1; step <= DragSteps; ++step)
        send(target.window, QEvent::MouseMove, target.at + way * step / DragSteps, Qt::NoButton,
             Qt::LeftButton);
    send(target.window, QEvent::MouseButtonRelease, target.at + way, Qt::LeftButton, Qt::NoButton);
    return QString();
}

QString press(QWidget *widget, Qt::Key key, const QString &text)
{
    QString why = obstacle(widget, widget ? widget->rect().center() : QPoint());
    if (!why.isEmpty())
        return why;
    widget->setFocus(Qt::OtherFocusReason);
    sendKey(widget, key, Qt::NoModifier, text);
    return QString();
}

QString enter(QWidget *field, const QString &text)
{
    QString why = click(field);
    if (!why.isEmpty())
        return why;
    sendKey(field, Qt::Key_A, Qt::ControlModifier, QString());
    for (const QChar letter : text)
        sendKey(field, Qt::Key_unknown, Qt::NoModifier, letter);
    sendKey(field, Qt::Key_Return, Qt::NoModifier, QStringLiteral("\r"));
    return QString();
}

QString check(QCheckBox *box, bool checked)
{
    if (box && box->isChecked() == checked)
        return QString();
    // On the indicator: a wide check box does not take clicks beyond its text.
    return click(box, box ? QPoint(8, box->height() / 2) : QPoint());
}

QString choose(QComboBox *box, int index)
{
    if (!box)
        return QStringLiteral("the list is not there");
    if (index < 0 || index >= box->count())
        return QStringLiteral("%1 has no entry %2").arg(nameOf(box)).arg(index);
    QString why;
    while (why.isEmpty() && box->currentIndex() != index)
        why = press(box, box->currentIndex() < index ? Qt::Key_Down : Qt::Key_Up);
    return why;
}

QString askForMenu(QWidget *widget, const QPoint &at)
{
    QString why = obstacle(widget, at);
    if (why.isEmpty()) {
        QContextMenuEvent event(QContextMenuEvent::Mouse, at, widget->mapToGlobal(at));
        QCoreApplication::sendEvent(widget, &event);
    }
    return why;
}

QString chooseTab(QTabBar *bar, int index)
{
    if (!bar || index >= bar->count())
        return QStringLiteral("the tab is not there");
    return click(bar, bar->tabRect(index).center());
}

QString chooseMenu(QWidget *menuBar, const QStringList &path)
{
    QWidget *holder = menuBar;
    for (const QString &title : path) {
        const QList<QAction *> actions = holder->actions();
        const auto found = std::find_if(actions.cbegin(), actions.cend(), [&title](const QAction *action) {
            return action->text().remove(QLatin1Char('&')) == title;
        });
        if (found == actions.cend())
            return QStringLiteral("there is no menu entry \"%1\"").arg(title);
        if (!(*found)->isEnabled())
            return QStringLiteral("the menu entry \"%1\" is disabled").arg(title);
        auto *bar = qobject_cast<QMenuBar *>(holder);
        auto *menu = qobject_cast<QMenu *>(holder);
        QMenu *next = (*found)->menu();
        const QRect place = bar ? bar->actionGeometry(*found) : menu->actionGeometry(*found);
        QString why = click(holder, place.center());
        if (!why.isEmpty() || !next)
            return why;
        // A menu in a menu opens in its own time; the arrow key does not wait.
        if (!next->isVisible())
            sendKey(holder, Qt::Key_Right, Qt::NoModifier, QString());
        holder = next;
    }
    return QString();
}

QString clickWindow(QWindow *window, const QPoint &at)
{
    if (!window || !window->isExposed())
        return QStringLiteral("the view is not to be seen");
    sendClick(window, at);
    return QString();
}

QString hoverWindow(QWindow *window, const QPoint &at)
{
    if (!window || !window->isExposed())
        return QStringLiteral("the view is not to be seen");
    send(window, QEvent::MouseMove, at, Qt::NoButton, Qt::NoButton);
    return QString();
}

} // namespace devhost::tour::hands
