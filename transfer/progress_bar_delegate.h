#pragma once

#include <QPointer>
#include <QStyledItemDelegate>

/// Paints DevList::ProgressRole as a progress bar that fills the cell.
class ProgressBarDelegate : public QStyledItemDelegate
{
    Q_OBJECT

public:
    /// A parent that is a widget lends the bars its style sheet.
    explicit ProgressBarDelegate(QObject *parent = nullptr);

    void paint(QPainter *painter, const QStyleOptionViewItem &option,
               const QModelIndex &index) const override;

private:
    QPointer<QWidget> m_parentWidget;
};
