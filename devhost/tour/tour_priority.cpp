// The pairing-priority dialog.

#include "devhost/tour/areas.h"
#include "devhost/tour/guide.h"
#include "devhost/tour/hands.h"

#include <QDialogButtonBox>
#include <QPushButton>
#include <QSharedPointer>
#include <QStyle>
#include <QStyleOptionViewItem>
#include <QTableWidget>

namespace devhost::tour {

namespace {

const QLatin1String DialogTitle("Bluetooth Pairing Priority");

/// The list in the open dialog; null when it is not open.
const QTableWidget *phones(const Guide &guide)
{
    const QWidget *dialog = guide.windowTitled(DialogTitle);
    return dialog ? dialog->findChild<QTableWidget *>(QStringLiteral("tableWidget")) : nullptr;
}

/// The first phone's row in the dialog; null when there is none.
QTableWidgetItem *firstPhone(const Guide &guide)
{
    const QTableWidget *table = phones(guide);
    return table ? table->item(0, 0) : nullptr;
}

bool isProtected(const QTableWidgetItem *phone)
{
    return phone && phone->checkState() == Qt::Checked;
}

QString clickBox(const QTableWidgetItem *phone)
{
    if (!phone)
        return QStringLiteral("no phone is listed");
    const QTableWidget *view = phone->tableWidget();
    QStyleOptionViewItem option;
    option.initFrom(view);
    option.rect = view->visualItemRect(phone);
    option.features = QStyleOptionViewItem::HasCheckIndicator;
    option.widget = view;
    const QRect box = view->style()->subElementRect(QStyle::SE_ItemViewItemCheckIndicator, &option, view);
    return hands::click(view->viewport(), box.center());
}

Step open(Guide &guide, const QString &name, const QString &picture)
{
    Step step;
    step.name = name;
    step.act
        = [&guide] { return hands::click(guide.find(QStringLiteral("bt_priority_pairing_pushButton"))); };
    step.missing
        = [&guide] { return unless(firstPhone(guide), QStringLiteral("the dialog shows no phones")); };
    step.picture = picture;
    step.area = guide.titledArea(DialogTitle);
    return step;
}

/// The hidden dialog takes over what the device says with the next poll.
QString missingUntilListReread(Guide &guide)
{
    return unless(guide.traffic().count(QStringLiteral("get"), QStringLiteral("/status/bluetooth/device"))
                      > 1,
                  QStringLiteral("the phones have not been read again"));
}

Step applyChanges(Guide &guide)
{
    const Step step = guide.confirmed(
        QStringLiteral("apply the changes"),
        [&guide] {
            const QWidget *dialog = guide.windowTitled(DialogTitle);
            const auto *box = dialog ? dialog->findChild<QDialogButtonBox *>() : nullptr;
            return hands::click(box ? box->button(QDialogButtonBox::Ok) : nullptr);
        },
        QStringLiteral("/status/bluetooth/list/0/keep"));
    return alsoNeeds(step, [&guide] {
        if (guide.windowTitled(DialogTitle))
            return QStringLiteral("the dialog is still open");
        return missingUntilListReread(guide);
    });
}

bool areAllProtected(const QTableWidget *phones)
{
    for (int row = 0; row < phones->rowCount(); ++row) {
        if (!isProtected(phones->item(row, 0)))
            return false;
    }
    return true;
}

} // namespace

Steps prioritySteps(Guide &guide)
{
    const QSharedPointer<bool> before(new bool(false));
    Step tick;
    tick.name = QStringLiteral("change the protection of the first phone");
    tick.act = [&guide, before] {
        *before = isProtected(firstPhone(guide));
        return clickBox(firstPhone(guide));
    };
    tick.missing = [&guide, before] {
        return unless(isProtected(firstPhone(guide)) != *before, QStringLiteral("its box has not changed"));
    };
    const Step see = alsoNeeds(
        open(guide, QStringLiteral("the device has kept the change"), QStringLiteral("priority-kept")),
        [&guide, before] {
            return unless(isProtected(firstPhone(guide)) != *before, QStringLiteral("the box is as before"));
        });
    return {open(guide, QStringLiteral("open the pairing priority"), QStringLiteral("priority")), tick,
            applyChanges(guide), see, guide.escape(DialogTitle)};
}

Steps clearPairingSteps(Guide &guide)
{
    Step clear
        = guide.push(QStringLiteral("clear the pairings"), QStringLiteral("bt_clear_pairing_pushButton"),
                     QStringLiteral("/control/bluetooth/clear_list"));
    clear = alsoNeeds(clear, [&guide] { return missingUntilListReread(guide); });
    Step see
        = open(guide, QStringLiteral("only protected phones are left"), QStringLiteral("pairing-cleared"));
    see = alsoNeeds(
        see, [&guide] { return unless(areAllProtected(phones(guide)), QStringLiteral("there are others")); });
    return {clear, see, guide.escape(DialogTitle)};
}

} // namespace devhost::tour
