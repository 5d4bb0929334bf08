#include "devhost/device_view.h"

#include "devhost/device_table_model.h"
#include "devhost/look.h"

#include <QContextMenuEvent>
#include <QHeaderView>
#include <QKeyEvent>
#include <QMenu>
#include <QPainter>
#include <QStyledItemDelegate>

namespace devhost {

namespace {

constexpr int RowMargin = 18;
constexpr int SettlingMs = 2500; // in which all devices that are there have announced themselves
constexpr int BarWidth = 3;

/// Marks the selected row by its ground and a bar at its beginning: the colours of its texts say how the
/// device is.
class RowDelegate : public QStyledItemDelegate
{
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const override
    {
        QStyledItemDelegate::paint(painter, option, index);
        if (index.column() == 0 && (option.state & QStyle::State_Selected))
            painter->fillRect(QRect(option.rect.topLeft(), QSize(BarWidth, option.rect.height())),
                              lookColor("focus"));
    }

protected:
    void initStyleOption(QStyleOptionViewItem *option, const QModelIndex &index) const override
    {
        QStyledItemDelegate::initStyleOption(option, index);
        if (option->state & QStyle::State_Selected)
            option->backgroundBrush = lookColor("selectedRow");
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
    connect(model, &QAbstractItemModel::rowsInserted, this, &DeviceView::chooseFirst);
    horizontalHeader()->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(horizontalHeader(), &QWidget::customContextMenuRequested, this, &DeviceView::showColumnMenu);
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
    verticalHeader()->hide();
}

void DeviceView::setUpColumns()
{
    horizontalHeader()->setHighlightSections(false);
    horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    horizontalHeader()->setStretchLastSection(true);
    sizeByText(this, {11, 16, 14, 17, 15, 8}, RowMargin);
}

void DeviceView::chooseFirst()
{
    if (!m_sinceFirst.isValid())
        m_sinceFirst.start();
    // Later it would be another device than the one that the user takes it for.
    if (!selectedDevice() || (!m_chosen && m_sinceFirst.elapsed() < SettlingMs))
        selectRow(qMax(0, rowOf(m_preferred)));
}

void DeviceView::showColumnMenu(const QPoint &place)
{
    QMenu menu(this);
    for (int column = DeviceTableModel::Name + 1; column < m_model->columnCount(); ++column) {
        QAction *action
            = menu.addAction(m_model->headerData(column, Qt::Horizontal, Qt::DisplayRole).toString());
        action->setCheckable(true);
        action->setChecked(!isColumnHidden(column));
        connect(action, &QAction::toggled, this,
                [this, column](bool shown) { setColumnHidden(column, !shown); });
    }
    menu.exec(horizontalHeader()->mapToGlobal(place));
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

void DeviceView::select(const QString &name)
{
    if (rowOf(name) >= 0)
        selectRow(rowOf(name));
}

int DeviceView::rowOf(const QString &name) const
{
    const QModelIndex start = m_model->index(0, DeviceTableModel::Name);
    const QModelIndexList found = m_model->match(start, Qt::DisplayRole, name, 1, Qt::MatchExactly);
    return found.isEmpty() ? -1 : found.first().row();
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
    m_chosen = true;
    const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (enter && selectedDevice())
        emit openRequested(selectedDevice());
    else
        QTableView::keyPressEvent(event);
}

void DeviceView::mousePressEvent(QMouseEvent *event)
{
    m_chosen = true;
    QTableView::mousePressEvent(event);
}

void DeviceView::contextMenuEvent(QContextMenuEvent *event)
{
    const bool byKey = event->reason() == QContextMenuEvent::Keyboard;
    const QPoint at = byKey ? visualRect(currentIndex()).bottomLeft() : event->pos();
    if (selectedDevice() && (byKey || indexAt(at).isValid()))
        emit menuRequested(viewport()->mapToGlobal(at));
}

} // namespace devhost
