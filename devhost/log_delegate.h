#pragma once

#include <QStyledItemDelegate>

class QTableView;

namespace devhost {

class LogFilter;

/// Draws the log's rows: a note, which has no reply, over the columns of the reply as well; of a message too
/// long for its column, beginning and end, where path and value stand.
class LogDelegate : public QStyledItemDelegate
{
public:
    /// @p filter is the model of @p view, which owns the delegate.
    LogDelegate(const LogFilter *filter, QTableView *view);

    void paint(QPainter *painter, const QStyleOptionViewItem &option,
               const QModelIndex &index) const override;

protected:
    void initStyleOption(QStyleOptionViewItem *option, const QModelIndex &index) const override;

private:
    bool isNote(const QModelIndex &index) const;

    const LogFilter *m_filter;
    const QTableView *m_view;
};

} // namespace devhost
