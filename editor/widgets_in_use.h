#pragma once

#include <QPointer>
#include <QWidget>

/// Keeps the widgets of a window alive that is destroyed inside a signal of one of them: Qt goes on using a
/// line edit or combo box, and the widget that takes its focus, when the slot has returned.
///
/// The window cannot simply have them deleted later when it goes. Where a message box is open at that time,
/// its event loop would delete them, and the signal, which is further down the stack, would return into freed
/// memory. So whoever may destroy the window holds one of these, all share it, and the last to let go has the
/// widgets deleted: by then every box is closed.
struct WidgetsInUse
{
    WidgetsInUse() = default;
    ~WidgetsInUse()
    {
        if (orphans)
            orphans->deleteLater();
    }
    Q_DISABLE_COPY(WidgetsInUse)

    QPointer<QWidget> orphans; ///< what the window has left behind; null while it lives
};
