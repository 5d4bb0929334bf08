#include "editor/bt_priority_table_widget.h"

#include "protocol/json.h"

#include <QHeaderView>

namespace {

// No device pairs with more phones; a size beyond it is a fault that must not freeze the editor.
constexpr int MostRows = 256;

} // namespace

BtPriorityTableWidget::BtPriorityTableWidget(QWidget *parent)
    : QTableWidget(parent)
{
}

void BtPriorityTableWidget::showStatus(const QJsonObject &status)
{
    setRowCount(qBound(0, json::number(status, "list_size"), MostRows));
    const QJsonArray phones = json::array(status, "list");
    for (int row = 0; row < rowCount(); ++row)
        fillRow(row, phones.at(row).toObject());
}

void BtPriorityTableWidget::showEvent(QShowEvent *event)
{
    // The style decides how much room the heading needs.
    horizontalHeader()->resizeSection(
        0, qMax(horizontalHeader()->defaultSectionSize(), horizontalHeader()->sectionSizeHint(0)));
    QTableWidget::showEvent(event);
}

/// Items are kept: every reply comes here, and new ones would have the table laid out anew.
void BtPriorityTableWidget::fillRow(int row, const QJsonObject &phone)
{
    for (int column = 0; column < columnCount(); ++column) {
        if (!item(row, column))
            setItem(row, column, new QTableWidgetItem);
    }
    const QString address = json::text(phone, "mac");
    const QString name = json::text(phone, "name");
    item(row, 0)->setText(address);
    item(row, 0)->setData(Qt::AccessibleTextRole, tr("Protect %1, %2").arg(name, address));
    item(row, 0)->setCheckState(json::flag(phone, "keep") ? Qt::Checked : Qt::Unchecked);
    item(row, 1)->setText(name);
}

bool BtPriorityTableWidget::isProtected(int row) const
{
    const QTableWidgetItem *address = item(row, 0);
    return address && address->checkState() == Qt::Checked;
}
