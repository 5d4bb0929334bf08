#pragma once

#include <QPointer>
#include <QStyledItemDelegate>

class DevList;

/// Paints the progress of a DevList's row as a progress bar that fills the cell.
class ProgressBarDelegate : public QStyledItemDelegate
{
    Q_OBJECT

public:
    /// A parent that is a widget lends the bars its style sheet.
    explicit ProgressBarDelegate(QObject *parent = nullptr);

    /// The rows to paint. Not owned; without a list the cells stay plain.
    void setList(DevList *list);

    void paint(QPainter *painter, const QStyleOptionViewItem &option,
               const QModelIndex &index) const override;

private:
    QPointer<DevList> m_list;
    QPointer<QWidget> m_parentWidget;
};
