#include "devhost/device_view.h"

#include "devhost/device_table_model.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QPainter>
#include <QStyledItemDelegate>

namespace devhost {

namespace {

constexpr int RowHeight = 34;

constexpr QRgb SelectedRow = 0xff513c28;

/// Marks the selected row by its ground alone: the colours of its texts say how the device is.
class RowDelegate : public QStyledItemDelegate
{
public:
    using QStyledItemDelegate::QStyledItemDelegate;

protected:
    void initStyleOption(QStyleOptionViewItem *option, const QModelIndex &index) const override
    {
        QStyledItemDelegate::initStyleOption(option, index);
        if (option->state & QStyle::State_Selected)
            option->backgroundBrush = QColor(SelectedRow);
        option->state &= ~(QStyle::State_Selected | QStyle::State_HasFocus | QStyle::State_MouseOver);
    }
};

} // namespace

DeviceView::DeviceView(DeviceTableModel *model, QWidget *parent)
    : QTableView(parent)
    , m_model(model)
{
    setModel(model);
    setObjectName(QStringLiteral("deviceView"));
    setAccessibleName(tr("Devices"));
    setUpLook();
    setUpColumns();
    connect(this, &QTableView::doubleClicked, this,
            [this](const QModelIndex &index) { emit openRequested(m_model->deviceAt(index)); });
    connect(selectionModel(), &QItemSelectionModel::selectionChanged, this, &DeviceView::selectionMoved);
    connect(model, &QAbstractItemModel::rowsInserted, this, [this] {
        if (!selectedDevice())
            selectRow(0);
    });
}

void DeviceView::setUpLook()
{
    setItemDelegate(new RowDelegate(this));
    setSelectionBehavior(SelectRows);
    setSelectionMode(SingleSelection);
    setAlternatingRowColors(true);
    setShowGrid(false);
    setWordWrap(false);
    setTabKeyNavigation(false);
    setContextMenuPolicy(Qt::CustomContextMenu);
    verticalHeader()->hide();
    verticalHeader()->setDefaultSectionSize(RowHeight);
}

void DeviceView::setUpColumns()
{
    horizontalHeader()->setHighlightSections(false);
    horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    horizontalHeader()->setStretchLastSection(true);
    const QPair<DeviceTableModel::Column, int> widths[] = {
        {DeviceTableModel::Presence, 104}, {DeviceTableModel::Name, 150},  {DeviceTableModel::Address, 130},
        {DeviceTableModel::Mac, 150},      {DeviceTableModel::Model, 140}, {DeviceTableModel::Version, 80},
    };
    for (const auto &width : widths)
        setColumnWidth(width.first, width.second);
}

void DeviceView::setEmptyText(const QString &text)
{
    m_emptyText = text;
    viewport()->update();
}

KnownDevice *DeviceView::selectedDevice() const
{
    const QModelIndexList rows = selectionModel()->selectedRows();
    return rows.isEmpty() ? nullptr : m_model->deviceAt(rows.first());
}

void DeviceView::select(const KnownDevice *device)
{
    for (int row = 0; row < m_model->rowCount(); ++row) {
        if (m_model->deviceAt(m_model->index(row, 0)) == device)
            selectRow(row);
    }
}

void DeviceView::paintEvent(QPaintEvent *event)
{
    QTableView::paintEvent(event);
    if (m_model->rowCount() > 0)
        return;
    const int split = m_emptyText.indexOf(QLatin1Char('\n'));
    QPainter painter(viewport());
    QFont heading = font();
    heading.setPointSizeF(heading.pointSizeF() * 1.35);
    painter.setFont(heading);
    const QRect half(0, 0, viewport()->width(), viewport()->height() / 2);
    painter.drawText(half.adjusted(16, 0, -16, -4), Qt::AlignHCenter | Qt::AlignBottom,
                     m_emptyText.left(split));
    painter.setFont(font());
    painter.setPen(palette().color(QPalette::Disabled, QPalette::Text));
    painter.drawText(half.translated(0, half.height()).adjusted(16, 8, -16, 0),
                     Qt::AlignHCenter | Qt::AlignTop | Qt::TextWordWrap, m_emptyText.mid(split + 1));
}

void DeviceView::keyPressEvent(QKeyEvent *event)
{
    const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (enter && selectedDevice())
        emit openRequested(selectedDevice());
    else
        QTableView::keyPressEvent(event);
}

} // namespace devhost
