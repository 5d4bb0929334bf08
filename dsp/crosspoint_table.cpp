#include "dsp/crosspoint_table.h"

#include "dsp/directions.h"
#include "widgets/shared_instance.h"

#include <QAccessibleWidget>
#include <QHeaderView>
#include <QKeyEvent>
#include <QScrollBar>

namespace {

constexpr QPoint Nowhere(-1, -1);

QAccessibleInterface *accessibleGrid(const QString &, QObject *object)
{
    auto *table = qobject_cast<CrosspointTable *>(object);
    return table ? new QAccessibleWidget(table, QAccessible::Grouping) : nullptr;
}

/// The part of a cell's widget that can have the keyboard now, or null.
QWidget *focusable(QWidget *cell)
{
    QList<QWidget *> parts = cell->findChildren<QWidget *>();
    if (cell->focusProxy())
        parts = {cell->focusProxy()};
    for (QWidget *part : parts) {
        if (part->focusPolicy() != Qt::NoFocus && part->isEnabled() && part->isVisible())
            return part;
    }
    return nullptr;
}

void reveal(QScrollBar *bar, const QHeaderView *sections, int section, int room)
{
    if (section == 0) // a header, always in sight
        return;
    const int start = sections->sectionPosition(section);
    const int least = start + sections->sectionSize(section) - room;
    const int most = start - sections->sectionSize(0);
    bar->setValue(qBound(least, bar->value(), qMax(least, most)));
}

} // namespace

/// While it lives, screen readers find the widgets of the cells. Qt's own interface for tables knows items
/// only.
class AccessibleCrosspoints
{
public:
    AccessibleCrosspoints() { QAccessible::installFactory(accessibleGrid); }
    ~AccessibleCrosspoints() { QAccessible::removeFactory(accessibleGrid); }
    Q_DISABLE_COPY(AccessibleCrosspoints)
};

CrosspointTable::CrosspointTable(QWidget *parent)
    : QTableWidget(parent)
    , m_accessible(vm::sharedInstance<AccessibleCrosspoints>())
    , m_hovered(Nowhere)
    , m_focused(Nowhere)
{
}

CrosspointTable::~CrosspointTable() = default;

void CrosspointTable::setCell(int row, int column, QWidget *widget)
{
    m_places.insert(widget, {column, row});
    setCellWidget(row, column, widget);
    widget->installEventFilter(this);
    for (QWidget *part : widget->findChildren<QWidget *>())
        part->installEventFilter(this);
    if (!widget->focusProxy())
        return;
    widget->focusProxy()->setFocusPolicy(Qt::ClickFocus);
    if (!m_tabStop)
        moveTabStop(widget->focusProxy());
}

void CrosspointTable::moveTabStop(QWidget *part)
{
    if (m_tabStop)
        m_tabStop->setFocusPolicy(Qt::ClickFocus);
    m_tabStop = part;
    part->setFocusPolicy(Qt::StrongFocus);
}

QPoint CrosspointTable::placeOf(QObject *part) const
{
    while (part && part->parent() != viewport())
        part = part->parent();
    return m_places.value(part, Nowhere);
}

bool CrosspointTable::eventFilter(QObject *watched, QEvent *event)
{
    const QPoint place = placeOf(watched);
    const bool isCell = watched->parent() == viewport();
    switch (event->type()) {
    case QEvent::Enter:
    case QEvent::Leave:
        if (isCell)
            m_hovered = event->type() == QEvent::Enter ? place : Nowhere;
        break;
    case QEvent::FocusIn:
        m_focused = place;
        showCell(place);
        if (const QWidget *cell = cellWidget(place.y(), place.x()); cell && cell->focusProxy() == watched)
            moveTabStop(cell->focusProxy());
        break;
    case QEvent::EnabledChange:
        if (watched == m_tabStop && !m_tabStop->isEnabled()) // one that is off must not shut the grid off
            moveTabStop(cellWidget(1, 1)->focusProxy());
        break;
    case QEvent::FocusOut:
        m_focused = Nowhere;
        break;
    case QEvent::KeyPress: {
        const auto *key = static_cast<QKeyEvent *>(event);
        const QWidget *cell = cellWidget(place.y(), place.x());
        return cell && watched == cell->focusProxy() && !(key->modifiers() & ~Qt::KeypadModifier)
            && goOn(place, key->key());
    }
    default:
        return QTableWidget::eventFilter(watched, event);
    }
    const QPoint at = m_hovered != Nowhere ? m_hovered : m_focused;
    emit userAt(at.y(), at.x());
    return QTableWidget::eventFilter(watched, event);
}

/// True for every arrow key: at the edge there is nothing more, and the value stays.
bool CrosspointTable::goOn(const QPoint &from, int key)
{
    const QPoint direction = directionOf(key);
    if (direction.isNull())
        return false;
    QPoint place = from + direction;
    for (QWidget *cell = cellWidget(place.y(), place.x()); cell; cell = cellWidget(place.y(), place.x())) {
        if (QWidget *next = focusable(cell)) {
            next->setFocus(Qt::OtherFocusReason);
            break;
        }
        place += direction;
    }
    return true;
}

void CrosspointTable::showCell(const QPoint &place)
{
    if (place == Nowhere)
        return;
    reveal(horizontalScrollBar(), horizontalHeader(), place.x(), viewport()->width());
    reveal(verticalScrollBar(), verticalHeader(), place.y(), viewport()->height());
}

void CrosspointTable::scrollContentsBy(int dx, int dy)
{
    QTableWidget::scrollContentsBy(dx, dy);
    pinHeaders();
}

void CrosspointTable::updateGeometries()
{
    QTableWidget::updateGeometries();
    pinHeaders();
}

void CrosspointTable::updateEditorGeometries()
{
    QTableWidget::updateEditorGeometries();
    pinHeaders();
}

void CrosspointTable::pinHeaders()
{
    const auto pin = [this](int row, int column) {
        if (QWidget *header = cellWidget(row, column)) {
            header->move(column == 0 ? 0 : header->x(), row == 0 ? 0 : header->y());
            header->raise();
        }
    };
    for (int column = 1; column < columnCount(); ++column)
        pin(0, column);
    for (int row = 1; row < rowCount(); ++row)
        pin(row, 0);
    pin(0, 0);
}
