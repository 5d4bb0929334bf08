#include "devhost/log_delegate.h"

#include "devhost/communication_log.h"
#include "devhost/log_filter.h"
#include "devhost/look.h"

#include <QPainter>
#include <QTableView>

namespace devhost {

namespace {

constexpr int TextMargin = 3; // as styles leave beside a text

} // namespace

LogDelegate::LogDelegate(const LogFilter *filter, QTableView *view)
    : QStyledItemDelegate(view)
    , m_filter(filter)
    , m_view(view)
{
}

bool LogDelegate::isNote(const QModelIndex &index) const
{
    return m_filter->entry(index.row()).isNote();
}

void LogDelegate::paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const
{
    QStyledItemDelegate::paint(painter, option, index);
    if (index.column() < CommunicationLog::Text || !isNote(index))
        return;
    const QModelIndex text = index.siblingAtColumn(CommunicationLog::Text);
    QStyleOptionViewItem note = option;
    QStyledItemDelegate::initStyleOption(&note, text);
    note.rect = m_view->visualRect(text) | m_view->visualRect(index.siblingAtColumn(CommunicationLog::Reply));
    const QRect place = m_view->style()
                            ->subElementRect(QStyle::SE_ItemViewItemText, &note, m_view)
                            .adjusted(TextMargin, 0, -TextMargin, 0);
    painter->save();
    painter->setClipRect(option.rect); // each of its columns may be drawn alone
    painter->setFont(note.font);
    const bool isSelected = option.state & QStyle::State_Selected;
    painter->setPen(isSelected ? lookColor("selectedText") : note.palette.color(QPalette::Text));
    painter->drawText(place, int(note.displayAlignment),
                      note.fontMetrics.elidedText(note.text, Qt::ElideRight, place.width()));
    painter->restore();
}

void LogDelegate::initStyleOption(QStyleOptionViewItem *option, const QModelIndex &index) const
{
    QStyledItemDelegate::initStyleOption(option, index);
    if (index.column() != CommunicationLog::Text)
        return;
    option->textElideMode = Qt::ElideMiddle;
    if (isNote(index))
        option->text.clear(); // drawn over the other columns, too
}

} // namespace devhost
