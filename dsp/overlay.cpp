#include "dsp/overlay.h"

#include <QEvent>
#include <QPainter>

Overlay::Overlay(const QColor &color, QWidget *parent)
    : QWidget(parent)
    , m_color(color)
{
    setWindowFlags(Qt::ToolTip | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint);
    setAttribute(Qt::WA_NoSystemBackground);
    setAttribute(Qt::WA_TranslucentBackground);
}

void Overlay::paintEvent(QPaintEvent *event)
{
    Q_UNUSED(event)
    QPainter(this).fillRect(rect(), m_color);
}

OverlayFactoryFilter::OverlayFactoryFilter(const QColor &color, QObject *parent)
    : QObject(parent)
    , m_color(color)
{
}

bool OverlayFactoryFilter::eventFilter(QObject *watched, QEvent *event)
{
    if (auto *widget = qobject_cast<QWidget *>(watched)) {
        if (event->type() == QEvent::Paint)
            followEnabledState(widget);
        else if (event->type() == QEvent::Resize)
            followSize(widget);
    }
    return QObject::eventFilter(watched, event);
}

void OverlayFactoryFilter::followEnabledState(QWidget *widget)
{
    if (widget->isEnabled()) {
        if (m_overlay)
            m_overlay->hide();
        return;
    }
    if (!m_overlay)
        m_overlay = new Overlay(m_color);
    // As a child it loses its window flags and lies on top of its siblings.
    m_overlay->setParent(widget);
    m_overlay->resize(widget->size());
    m_overlay->show();
}

void OverlayFactoryFilter::followSize(QWidget *widget)
{
    if (m_overlay && m_overlay->parentWidget() == widget)
        m_overlay->resize(widget->size());
}
