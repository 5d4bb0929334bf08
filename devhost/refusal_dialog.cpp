#include "devhost/refusal_dialog.h"

#include "devhost/plain_text.h"

#include <QDialogButtonBox>
#include <QHeaderView>
#include <QLabel>
#include <QTreeWidget>
#include <QVBoxLayout>
#include <QVariant>

namespace devhost {

namespace {

constexpr QSize StartSize(760, 360);
constexpr int ChangeWidth = 340; // the reasons are to be seen as well

} // namespace

RefusalDialog::RefusalDialog(const QString &device, const Refusals &refusals, QWidget *window)
    : QDialog(window)
{
    setWindowTitle(tr("Refused by %1").arg(device));
    const QVector<RefusedChange> latest = refusals.latest(device);
    auto *note
        = new QLabel(latest.isEmpty() ? tr("The device has refused nothing since you last looked.")
                                      : tr("The device kept what it had. %1 refused; the newest is first.")
                                            .arg(refusals.count(device)));
    note->setProperty("role", QStringLiteral("caption"));
    auto *list = new QTreeWidget;
    list->setAccessibleName(tr("Refused changes"));
    list->setHeaderLabels({tr("Time"), tr("Asked to"), tr("Reason of the device")});
    list->setRootIsDecorated(false);
    list->setUniformRowHeights(true);
    for (const RefusedChange &change : latest) {
        auto *row = new QTreeWidgetItem(
            list, {change.at.toString(QStringLiteral("hh:mm:ss")), change.what, change.reason});
        row->setToolTip(1, plainTip(change.what));
        row->setToolTip(2, plainTip(change.reason));
    }
    list->resizeColumnToContents(0);
    list->setColumnWidth(1, ChangeWidth);
    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Close);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto *rows = new QVBoxLayout(this);
    rows->addWidget(note);
    rows->addWidget(list);
    rows->addWidget(buttons);
    resize(StartSize);
}

} // namespace devhost
