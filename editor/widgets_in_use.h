#pragma once

#include <QPointer>
#include <QWidget>

/// Keeps the widgets of a window alive that is destroyed inside a signal of one of them. Qt goes on using a
/// line edit or combo box, and the widget that takes its focus, when the slot has returned. Every slot on the
/// stack shares one; the last to return has the widgets deleted from the event loop.
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
