#pragma once

#include <QPoint>
#include <QString>
#include <QStringList>
#include <Qt>

class QCheckBox;
class QComboBox;
class QTabBar;
class QWidget;
class QWindow;

/// What a user's hands do, as real events to the real windows. Each answer is empty, or why it cannot be
/// done: a widget that is missing, hidden, disabled or behind a dialog is not touched.
namespace devhost::tour::hands {

/// A click on the middle of @p widget, or on @p at in its coordinates.
QString click(QWidget *widget);
QString click(QWidget *widget, const QPoint &at);
QString doubleClick(QWidget *widget, const QPoint &at);
/// Presses at @p from, moves by @p way in small steps, and releases.
QString drag(QWidget *widget, const QPoint &from, const QPoint &way);
/// A press of one key, after giving @p widget the keyboard focus; @p text as the key would type it.
QString press(QWidget *widget, Qt::Key key, const QString &text = QString());

/// Replaces what is in the line edit or spin box, and ends with Enter.
QString enter(QWidget *field, const QString &text);
/// Clicks the box only when it is not as wanted already.
QString check(QCheckBox *box, bool checked);
/// Chooses with the arrow keys.
QString choose(QComboBox *box, int index);
/// Asks for the menu of what is at @p at.
QString askForMenu(QWidget *widget, const QPoint &at);
QString chooseTab(QTabBar *bar, int index);
/// Opens the menus of @p bar as named in @p path, one below the other, and clicks the last entry.
QString chooseMenu(QWidget *menuBar, const QStringList &path);

/// A click in a window that is no widget, and the pointer moving there.
QString clickWindow(QWindow *window, const QPoint &at);
QString hoverWindow(QWindow *window, const QPoint &at);

} // namespace devhost::tour::hands
