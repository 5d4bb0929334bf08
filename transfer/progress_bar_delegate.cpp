#include "transfer/progress_bar_delegate.h"

#include "transfer/dev_list.h"

#include <QPainter>
#include <QProgressBar>

ProgressBarDelegate::ProgressBarDelegate(QObject *parent)
    : QStyledItemDelegate(parent)
    , m_parentWidget(qobject_cast<QWidget *>(parent))
{
}

void ProgressBarDelegate::paint(QPainter *painter, const QStyleOptionViewItem &option,
                                const QModelIndex &index) const
{
    QProgressBar bar;
    bar.setRange(0, 100);
    bar.setTextVisible(false); // the last block is never reported; the words beside it say how far it is
    bar.setValue(index.data(DevList::ProgressRole).toInt());
    if (m_parentWidget) {
        bar.setStyleSheet(m_parentWidget->styleSheet());
        bar.setPalette(m_parentWidget->palette());
    }
    bar.resize(option.rect.size());
    painter->save();
    painter->translate(option.rect.topLeft());
    bar.render(painter, QPoint(), QRegion(), QWidget::DrawWindowBackground | QWidget::DrawChildren);
    painter->restore();
}
