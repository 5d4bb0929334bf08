#include "transfer/tick_delegate.h"

#include <QPainter>
#include <QWidget>

void TickDelegate::initStyleOption(QStyleOptionViewItem *option, const QModelIndex &index) const
{
    QStyledItemDelegate::initStyleOption(option, index);
    QPixmap tick;
    if (m_isDue && option->widget) {
        tick = option->icon.pixmap(option->widget->window()->windowHandle(), option->decorationSize);
        QPainter painter(&tick);
        painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
        painter.fillRect(tick.rect(), option->palette.color(QPalette::Text));
    }
    option->icon = tick;
}
