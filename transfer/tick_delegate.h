#pragma once

#include <QStyledItemDelegate>

/// Paints an item's icon in the colour of its text, so that it is seen on any ground, and only once it is
/// due.
class TickDelegate : public QStyledItemDelegate
{
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    /// The view is to be painted anew afterwards.
    void setDue() { m_isDue = true; }

protected:
    void initStyleOption(QStyleOptionViewItem *option, const QModelIndex &index) const override;

private:
    bool m_isDue = false;
};
