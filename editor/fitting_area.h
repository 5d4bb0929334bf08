#pragma once

#include <QEvent>
#include <QScreen>
#include <QScrollArea>

/// Shows all of a window's contents while the screen has room for them, and lets the window be smaller where
/// it has not, as with large text on a small screen: then it scrolls.
class FittingArea : public QScrollArea
{
public:
    /// Owns @p content.
    explicit FittingArea(QWidget *content)
    {
        setFrameShape(QFrame::NoFrame);
        setFocusPolicy(Qt::NoFocus); // the keyboard is for what is in it
        setWidgetResizable(true);
        setWidget(content);
    }

    QSize sizeHint() const override { return widget()->sizeHint().boundedTo(room()); }
    QSize minimumSizeHint() const override { return widget()->minimumSizeHint().boundedTo(room()); }

protected:
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        const bool isDone = QScrollArea::eventFilter(watched, event);
        if (event->type() == QEvent::LayoutRequest)
            updateGeometry();
        return isDone;
    }

private:
    /// Without the window's frame and its bars.
    QSize room() const { return screen()->availableSize() - QSize(8, 64); }
};
