#include "devhost/overwrite_dialog.h"

#include "devhost/plain_text.h"

#include <QDialogButtonBox>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace devhost {

namespace {

constexpr int MostRows = 1000; // several times the settings of a device
constexpr QSize StartSize(620, 480);

QLabel *plainLabel(const QString &text, const char *role)
{
    auto *label = new QLabel(text);
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    label->setProperty("role", QLatin1String(role));
    return label;
}

QString summaryOf(const QVector<SnapshotChange> &changes)
{
    if (changes.isEmpty())
        return OverwriteDialog::tr("The device has all of these settings already.");
    if (changes.size() > MostRows)
        return OverwriteDialog::tr(
                   "%1 settings would change; these are the first %2 of them. What is set on the device "
                   "now is lost unless it was saved.")
            .arg(changes.size())
            .arg(MostRows);
    return OverwriteDialog::tr("%1 would change. What is set on the device now is lost unless it was saved.")
        .arg(changes.size() == 1 ? OverwriteDialog::tr("One setting")
                                 : OverwriteDialog::tr("%1 settings").arg(changes.size()));
}

} // namespace

OverwriteDialog::OverwriteDialog(const QString &question, const QVector<SnapshotChange> &changes,
                                 QWidget *window)
    : QDialog(window)
    , m_question(question)
{
    setWindowTitle(tr("Load Snapshot"));
    auto *column = new QVBoxLayout(this);
    column->addWidget(plainLabel(question, "heading"));
    column->addWidget(plainLabel(summaryOf(changes), "caption"));
    column->addWidget(createList(changes));
    column->addWidget(createButtons());
    resize(StartSize);
}

QWidget *OverwriteDialog::createList(const QVector<SnapshotChange> &changes)
{
    auto *list = new QTreeWidget;
    list->setObjectName(QStringLiteral("changeList"));
    list->setAccessibleName(tr("What would change"));
    list->setHeaderLabels({tr("Setting"), tr("On the device"), tr("In the file")});
    list->setRootIsDecorated(false);
    list->setUniformRowHeights(true);
    list->setAlternatingRowColors(true);
    for (const SnapshotChange &change : changes.mid(0, MostRows)) {
        auto *row = new QTreeWidgetItem(list, {settingName(change.path), change.now, change.then});
        row->setToolTip(0, plainTip(change.path));
    }
    list->header()->setSectionResizeMode(QHeaderView::ResizeToContents);
    list->setVisible(!changes.isEmpty());
    return list;
}

QWidget *OverwriteDialog::createButtons()
{
    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Cancel);
    QPushButton *overwrite = buttons->addButton(tr("&Overwrite"), QDialogButtonBox::AcceptRole);
    overwrite->setObjectName(QStringLiteral("overwriteButton"));
    overwrite->setAutoDefault(false);
    QPushButton *cancel = buttons->button(QDialogButtonBox::Cancel);
    cancel->setDefault(true);
    cancel->setFocus();
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    return buttons;
}

} // namespace devhost
