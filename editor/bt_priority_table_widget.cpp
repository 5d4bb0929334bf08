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
    setRowCount(0);
    setRowCount(qBound(0, json::number(status, "list_size"), MostRows));
    // The style decides how much room the heading needs.
    horizontalHeader()->resizeSection(
        0, qMax(horizontalHeader()->defaultSectionSize(), horizontalHeader()->sectionSizeHint(0)));
    const QJsonArray phones = json::array(status, "list");
    for (int row = 0; row < rowCount(); ++row)
        fillRow(row, phones.at(row).toObject());
}

void BtPriorityTableWidget::fillRow(int row, const QJsonObject &phone)
{
    auto *address = new QTableWidgetItem(json::text(phone, "mac"));
    address->setCheckState(json::flag(phone, "keep") ? Qt::Checked : Qt::Unchecked);
    setItem(row, 0, address);
    setItem(row, 1, new QTableWidgetItem(json::text(phone, "name")));
}

bool BtPriorityTableWidget::isProtected(int row) const
{
    const QTableWidgetItem *address = item(row, 0);
    return address && address->checkState() == Qt::Checked;
}
