#include "dsp/block_view.h"

#include "dsp/block_keys.h"

#include <QEvent>
#include <QPalette>
#include <QQmlContext>
#include <QQuickItem>
#include <QQuickView>
#include <QTimer>
#include <QUrl>
#include <QWidget>

namespace {

// Longer than the view needs to follow its scene.
constexpr int SettleMs = 100;

/// Keeps the view as large as its container. A view that sizes itself to its scene follows the scene from a
/// timer, so while a user drags the window's edge, and as late as a busy system lets it, it can fall back to
/// a size that the container has left.
class SizeKeeper : public QObject
{
public:
    SizeKeeper(QWindow *view, QWidget *container)
        : QObject(container)
        , m_view(view)
        , m_container(container)
    {
        m_settled.setSingleShot(true);
        m_settled.setInterval(SettleMs);
        connect(&m_settled, &QTimer::timeout, this, [this] { m_view->resize(m_container->size()); });
        container->installEventFilter(this);
        const auto settle = [this] { m_settled.start(); };
        connect(view, &QWindow::widthChanged, this, settle);
        connect(view, &QWindow::heightChanged, this, settle);
    }

    bool eventFilter(QObject *, QEvent *event) override
    {
        if (event->type() == QEvent::Resize)
            m_settled.start();
        return false;
    }

private:
    QWindow *m_view; ///< owned by the container
    QWidget *m_container;
    QTimer m_settled;
};

/// Has the scene drawn for light or for dark windows, and on their colour.
class ColorKeeper : public QObject
{
public:
    ColorKeeper(QQuickView *view, QWidget *container)
        : QObject(container)
        , m_view(view)
    {
        container->installEventFilter(this);
        follow(container->palette());
    }

    bool eventFilter(QObject *container, QEvent *event) override
    {
        if (event->type() == QEvent::PaletteChange)
            follow(static_cast<QWidget *>(container)->palette());
        return false;
    }

private:
    void follow(const QPalette &palette)
    {
        const QColor &ground = palette.color(QPalette::Window);
        m_view->setColor(ground);
        if (QObject *scene = m_view->rootObject())
            scene->setProperty("light", ground.lightness() > 127);
    }

    QQuickView *m_view; ///< owned by the container
};

} // namespace

QWidget *createBlockView(QObject *backend, QWidget *parent)
{
    auto *view = new QQuickView(QUrl(QStringLiteral("qrc:/TarnKBX_QML/DSP.qml")));
    view->rootContext()->setContextProperty(QStringLiteral("tarnkbx_backend"), backend);
    QWidget *container = QWidget::createWindowContainer(view, parent);
    new SizeKeeper(view, container);
    new ColorKeeper(view, container);
    giveBlocksKeys(container, view, backend);
    return container;
}
