#include "devhost/help_menu.h"

#include "devhost/host.h"
#include "devhost/notice_bar.h"
#include "devhost/plain_text.h"
#include "devhost/upload_port.h"
#include "host/plexo_plugin_factory.h"

#include <QDialog>
#include <QDialogButtonBox>
#include <QDir>
#include <QHeaderView>
#include <QMenuBar>
#include <QSysInfo>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace devhost {

namespace {

constexpr QSize KeysSize(520, 560);

QTreeWidgetItem *addGroup(QTreeWidget *list, const QString &title)
{
    auto *group = new QTreeWidgetItem(list, {title});
    QFont bold = list->font();
    bold.setBold(true);
    group->setFont(0, bold);
    group->setExpanded(true);
    return group;
}

/// Those of @p menu and of the menus in it.
void addKeys(const QMenu &menu, QTreeWidgetItem *group, const QString &within = QString())
{
    for (const QAction *action : menu.actions()) {
        const QString keys = action->shortcut().toString(QKeySequence::NativeText);
        if (!keys.isEmpty())
            new QTreeWidgetItem(group, {within + action->text().remove(QLatin1Char('&')), keys});
        if (action->menu())
            addKeys(*action->menu(), group, action->text().remove(QLatin1Char('&')) + QStringLiteral(": "));
    }
}

/// Of what is no menu: the list of devices, and what editors have in common.
void addFixedKeys(QTreeWidget *list)
{
    struct Keys
    {
        QString what;
        QString keys;
    };
    const auto add = [list](const QString &title, const QList<Keys> &rows) {
        QTreeWidgetItem *group = addGroup(list, title);
        for (const Keys &row : rows)
            new QTreeWidgetItem(group, {row.what, row.keys});
    };
    add(HelpMenu::tr("List of devices"),
        {{HelpMenu::tr("Open the editor"), HelpMenu::tr("Return")},
         {HelpMenu::tr("Choose a device by its name"), HelpMenu::tr("letters")},
         {HelpMenu::tr("What can be done with it"), HelpMenu::tr("Menu key, Shift+F10")}});
    add(HelpMenu::tr("Faders and dials"),
        {{HelpMenu::tr("1 dB, 3 dB, 6 dB"), HelpMenu::tr("Arrow, Shift+arrow, Page keys")},
         {HelpMenu::tr("Lowest, highest"), HelpMenu::tr("Home, End")},
         {HelpMenu::tr("Ten times finer while dragging"), HelpMenu::tr("Ctrl")}});
}

} // namespace

HelpMenu::HelpMenu(Host *host, NoticeBar *notice, QMenuBar *menuBar)
    : QMenu(tr("&Help"), menuBar)
    , m_host(host)
    , m_notice(notice)
    , m_menuBar(menuBar)
{
    setToolTipsVisible(true);
    addEntry(tr("&Keyboard"), QKeySequence::HelpContents, tr("Show what can be done with keys"),
             &HelpMenu::showKeys);
    addEntry(tr("Loaded &Plugins"), {}, tr("Show the plugins in use"), &HelpMenu::showPlugins);
    addEntry(tr("Voice Cue &Uploads"), {}, tr("Show whether UDP port 69 can be used"),
             &HelpMenu::showUploadAdvice);
    addSeparator();
    addEntry(tr("&About"), {}, tr("Show the versions of host, plugins and system"), &HelpMenu::showAbout);
}

void HelpMenu::addEntry(const QString &text, const QKeySequence &keys, const QString &tip,
                        void (HelpMenu::*slot)())
{
    addAction(text, this, slot, keys)->setToolTip(tip);
}

void HelpMenu::showKeys()
{
    QDialog dialog(m_menuBar->window());
    dialog.setWindowTitle(tr("Keyboard"));
    auto *list = new QTreeWidget(&dialog);
    list->setColumnCount(2);
    list->setHeaderLabels({tr("What"), tr("Keys")});
    list->setAccessibleName(tr("Keys"));
    list->setRootIsDecorated(false);
    for (const QAction *action : m_menuBar->actions())
        addKeys(*action->menu(), addGroup(list, action->text().remove(QLatin1Char('&'))));
    addFixedKeys(list);
    list->header()->setSectionResizeMode(0, QHeaderView::Stretch);
    list->header()->setStretchLastSection(false);
    list->header()->setSectionResizeMode(1, QHeaderView::ResizeToContents);
    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Close, &dialog);
    connect(buttons, &QDialogButtonBox::rejected, &dialog, &QDialog::reject);
    auto *column = new QVBoxLayout(&dialog);
    column->addWidget(list);
    column->addWidget(buttons);
    dialog.resize(KeysSize);
    dialog.exec();
}

void HelpMenu::showPlugins()
{
    QString text;
    for (const LoadedPlugin &plugin : m_host->registry()->plugins()) {
        PlexoPluginFactory &factory = *plugin.factory;
        text += tr("%1 %2 by %3\nModels: %4\n%5\n\n")
                    .arg(factory.getPluginName(), factory.getVersion(), factory.getVendorName(),
                         factory.getSupportedModels().join(QStringLiteral(", ")),
                         QDir::toNativeSeparators(plugin.file));
    }
    if (text.isEmpty())
        text = tr("No plugin is loaded. Start the host with --plugin and a plugin file.");
    tell(tr("Loaded Plugins"), text.trimmed());
}

void HelpMenu::showUploadAdvice()
{
    const QString problem = uploadPortProblem();
    m_notice->setNotice(QStringLiteral("uploads"), problem);
    if (problem.isEmpty())
        tell(tr("Voice Cue Uploads"), tr("UDP port 69 is free: voice cues can be uploaded to devices."));
}

void HelpMenu::showAbout()
{
    QString text = tr("Plexo Development Host %1\nFinds audio devices, opens their editors and shows what "
                      "they say.\n\n")
                       .arg(QStringLiteral(KBX_VERSION));
    for (const LoadedPlugin &plugin : m_host->registry()->plugins())
        text += tr("%1 %2\n").arg(plugin.factory->getPluginName(), plugin.factory->getVersionFull());
    text += tr("Qt %1 (built with %2)\n%3, %4")
                .arg(QLatin1String(qVersion()), QStringLiteral(QT_VERSION_STR), QSysInfo::prettyProductName(),
                     QSysInfo::currentCpuArchitecture());
    tell(tr("About"), text);
}

void HelpMenu::tell(const QString &title, const QString &text)
{
    PlainBox(QMessageBox::Information, title, text, QMessageBox::Ok, m_menuBar->window()).exec();
}

} // namespace devhost
