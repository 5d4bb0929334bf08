#pragma once

#include <QEvent>
#include <QLayout>
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

    /// Layouts of pages that are not in front still go by the text size before the style was known: the
    /// window would grow when their page is chosen.
    void showEvent(QShowEvent *event) override
    {
        const QList<QWidget *> parts = widget()->findChildren<QWidget *>();
        for (auto part = parts.crbegin(); part != parts.crend(); ++part) {
            if ((*part)->layout())
                (*part)->layout()->activate();
            (*part)->updateGeometry();
        }
        QScrollArea::showEvent(event);
    }

private:
    /// Without the window's frame and its bars.
    QSize room() const { return screen()->availableSize() - QSize(8, 64); }
};
