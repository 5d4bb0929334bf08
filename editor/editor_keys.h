#pragma once

#include <QKeyEvent>
#include <QPushButton>
#include <QTabWidget>

/// What keys do everywhere in an editor: Ctrl+W presses its Close button, Ctrl+Tab and Ctrl+Shift+Tab turn
/// its pages. They are taken when no widget has used them, so a host's own shortcuts come first.
class EditorKeys : public QObject
{
public:
    EditorKeys(QWidget *window, QPushButton *close, QTabWidget *pages)
        : QObject(window)
        , m_close(close)
        , m_pages(pages)
    {
        window->installEventFilter(this);
    }

    bool eventFilter(QObject *, QEvent *event) override
    {
        auto *key = event->type() == QEvent::KeyPress ? static_cast<QKeyEvent *>(event) : nullptr;
        if (!key)
            return false;
        if (key->matches(QKeySequence::Close))
            m_close->click();
        else if (m_pages->isEnabled() && key->matches(QKeySequence::NextChild))
            turn(1);
        else if (m_pages->isEnabled() && key->matches(QKeySequence::PreviousChild))
            turn(-1);
        else
            return false;
        return true;
    }

private:
    void turn(int step)
    {
        const int pages = m_pages->count();
        m_pages->setCurrentIndex((m_pages->currentIndex() + step + pages) % pages);
    }

    QPushButton *m_close; ///< owned by the window, as is the next
    QTabWidget *m_pages;
};
