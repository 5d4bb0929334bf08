#pragma once

#include <QMenu>

namespace devhost {

class EditorSessions;

/// The menu of all open editors and their block windows, each with its device. It raises them and places them
/// side by side.
class WindowMenu : public QMenu
{
    Q_OBJECT

public:
    /// @p sessions is not owned. @p hostWindow is the one window that is not listed.
    WindowMenu(const EditorSessions *sessions, QWidget *hostWindow);

signals:
    /// A sentence for the user: not all windows could be placed beside each other.
    void hasNoRoom(const QString &sentence);

private:
    void fill();
    QList<QWidget *> windows() const;
    QString titleOf(const QWidget *window) const;
    void tile();

    const EditorSessions *m_sessions;
    QWidget *m_hostWindow;
    QAction *m_tile;
    QAction *m_windows = nullptr; // the separator above them
};

/// Where to put windows of these sizes: beside each other in rows from left to right, inside @p area. What
/// does not fit begins again at the top, a little shifted.
QList<QRect> tiled(const QList<QSize> &sizes, const QRect &area);

} // namespace devhost
