#include "dsp/block_keys.h"

#include "dsp/blocks.h"
#include "dsp/directions.h"

#include <QAccessible>
#include <QCoreApplication>
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
    Q_DECLARE_TR_FUNCTIONS(BlockKeys)

public:
    BlockKeys(QWidget *container, QQuickView *view, QObject *backend)
        : QObject(container)
        , m_container(container)
        , m_scene(view->rootObject())
        , m_backend(backend)
    {
        container->setFocusPolicy(Qt::TabFocus);
        container->setAccessibleName(tr("Block diagram"));
        container->setAccessibleDescription(tr("Arrow keys choose a block, Enter opens it."));
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
        announce();
        return true;
    }

    /// Screen readers say what has the keyboard anew; of its name alone they need not.
    void announce()
    {
        QAccessibleEvent event(m_container, QAccessible::Focus);
        QAccessible::updateAccessibility(&event);
    }

    void frame(const QPoint &place)
    {
        const BlockInfo *block = blockAt(place);
        if (m_scene)
            m_scene->setProperty("chosen", block ? m_scene->property(block->area) : QVariant());
        m_container->setAccessibleName(block ? tr("Block diagram: %1").arg(block->title)
                                             : tr("Block diagram"));
    }

    QWidget *m_container;
    QPointer<QQuickItem> m_scene; ///< goes before the container; null when it did not load
    QObject *m_backend;
    QPoint m_last = blocks().front().place;
};

} // namespace

void giveBlocksKeys(QWidget *container, QQuickView *view, QObject *backend)
{
    new BlockKeys(container, view, backend);
}
