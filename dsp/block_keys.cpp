#include "dsp/block_keys.h"

#include "dsp/blocks.h"
#include "dsp/directions.h"

#include <QKeyEvent>
#include <QPointer>
#include <QQuickItem>
#include <QQuickView>
#include <QWidget>

namespace {

constexpr QPoint NoBlock(-1, -1);

const BlockInfo *blockAt(const QPoint &place)
{
    for (const BlockInfo &block : blocks()) {
        if (block.place == place)
            return &block;
    }
    return nullptr;
}

bool opens(int key)
{
    return key == Qt::Key_Return || key == Qt::Key_Enter || key == Qt::Key_Space;
}

/// The keyboard stays with the container: a view that had it would not give it back at Tab.
class BlockKeys : public QObject
{
public:
    BlockKeys(QWidget *container, QQuickView *view, QObject *backend)
        : QObject(container)
        , m_scene(view->rootObject())
        , m_backend(backend)
    {
        container->setFocusPolicy(Qt::TabFocus);
        container->setAccessibleName(QObject::tr("Block diagram: arrow keys choose, Enter opens"));
        container->installEventFilter(this);
    }

    bool eventFilter(QObject *, QEvent *event) override
    {
        switch (event->type()) {
        case QEvent::FocusIn:
            frame(m_last);
            return true;
        case QEvent::FocusOut:
            frame(NoBlock);
            return true;
        case QEvent::KeyPress:
            return press(static_cast<QKeyEvent *>(event)->key());
        default:
            return false;
        }
    }

private:
    bool press(int key)
    {
        if (opens(key))
            return QMetaObject::invokeMethod(m_backend, blockAt(m_last)->click);
        const QPoint direction = directionOf(key);
        if (direction.isNull())
            return false;
        QPoint next = m_last + direction;
        if (!blockAt(next) && direction.y() == 0)
            next.setY(1); // the middle column has one block only
        if (blockAt(next))
            m_last = next;
        frame(m_last);
        return true;
    }

    void frame(const QPoint &place)
    {
        const BlockInfo *block = blockAt(place);
        if (m_scene)
            m_scene->setProperty("chosen", block ? m_scene->property(block->area) : QVariant());
    }

    QPointer<QQuickItem> m_scene; ///< goes before the container; null when it did not load
    QObject *m_backend;
    QPoint m_last = blocks().front().place;
};

} // namespace

void giveBlocksKeys(QWidget *container, QQuickView *view, QObject *backend)
{
    new BlockKeys(container, view, backend);
}
