// The menus, the tool bar and what their actions do.

#include "devhost/device_view.h"
#include "devhost/fault_panel.h"
#include "devhost/help_menu.h"
#include "devhost/host.h"
#include "devhost/host_window.h"
#include "devhost/icons.h"
#include "devhost/known_device.h"
#include "devhost/log_panel.h"
#include "devhost/look_menu.h"
#include "devhost/network_choice.h"
#include "devhost/plain_text.h"
#include "devhost/record_action.h"
#include "devhost/snapshot_dialogs.h"
#include "devhost/window_menu.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QMenuBar>
#include <QPointer>
#include <QPushButton>
#include <QStyle>
#include <QToolBar>
#include <QToolButton>

namespace devhost {

namespace {

constexpr int PresetCount = 8;

} // namespace

QAction *HostWindow::addAction(QMenu *menu, const QString &text, const QKeySequence &keys, const QString &tip,
                               void (HostWindow::*slot)())
{
    QAction *action = menu->addAction(text, this, slot);
    action->setShortcut(keys);
    action->setToolTip(
        keys.isEmpty() ? tip : QStringLiteral("%1 (%2)").arg(tip, keys.toString(QKeySequence::NativeText)));
    return action;
}

void HostWindow::createMenus()
{
    m_deviceMenu = menuBar()->addMenu(tr("&Device"));
    fillDeviceMenu(m_deviceMenu);
    m_deviceMenu->setToolTipsVisible(true);
    fillLogMenu(menuBar()->addMenu(tr("&Log")));
    menuBar()->addMenu(new LookMenu(m_memory, this));
    auto *windows = new WindowMenu(m_host->sessions(), this);
    connect(windows, &WindowMenu::hasNoRoom, m_host,
            [this](const QString &sentence) { m_host->reportStatus(sentence); });
    menuBar()->addMenu(windows);
    menuBar()->addMenu(new HelpMenu(m_host, m_notice, menuBar()));
}

void HostWindow::fillLogMenu(QMenu *menu)
{
    menu->addAction(tr("&Filter"), m_log, &LogPanel::focusFilter, QKeySequence::Find);
    menu->addAction(tr("&Message to Device"), m_log, &LogPanel::focusMessage, tr("Ctrl+M"));
    menu->addAction(tr("&Copy Lines"), m_log, &LogPanel::copySelected, tr("Ctrl+Shift+C"));
    menu->addAction(tr("&Save..."), m_log, &LogPanel::saveShown, tr("Ctrl+Shift+L"));
    auto *record = new RecordAction(m_host, m_memory, this);
    menu->addAction(record);
    m_log->addTool(record);
    menu->addAction(tr("C&lear"), m_host->log(), &CommunicationLog::clear);
}

void HostWindow::fillDeviceMenu(QMenu *menu)
{
    m_open = addAction(menu, tr("&Open"), tr("Ctrl+O"), tr("Open the editor of the selected device"),
                       &HostWindow::openSelected);
    QAction *close = addAction(menu, tr("&Close"), tr("Ctrl+W"),
                               tr("Close the editor of the selected device"), &HostWindow::closeSelected);
    menu->addSeparator();
    QAction *save = addAction(menu, tr("&Save Snapshot..."), tr("Ctrl+S"),
                              tr("Save all settings of the device to a file"), &HostWindow::saveSnapshot);
    QAction *load
        = addAction(menu, tr("&Load Snapshot..."), tr("Ctrl+L"),
                    tr("Overwrite the device's settings with those of a file"), &HostWindow::loadSnapshot);
    menu->addSeparator();
    m_storeMenu = menu->addMenu(tr("S&tore Preset"));
    fillPresetMenu(m_storeMenu, tr("Keep the present settings in one of the device's presets"), true);
    m_recallMenu = menu->addMenu(tr("&Recall Preset"));
    fillPresetMenu(m_recallMenu, tr("Bring back the settings of one of the device's presets"), false);
    menu->addSeparator();
    m_refusals = addAction(menu, tr("R&efused Changes..."), tr("Ctrl+R"),
                           tr("Show what the device refused, and why"), &HostWindow::showSelectedRefusals);
    m_faults = addAction(menu, tr("Simulated &Faults..."), tr("Ctrl+D"),
                         tr("Let the simulated device misbehave while it runs"), &HostWindow::showFaults);
    menu->addSeparator();
    menu->addAction(tr("&Quit"), this, &QWidget::close, QKeySequence::Quit);
    const QPair<QAction *, Picture> pictures[] = {{m_open, Picture::Open},
                                                  {close, Picture::Close},
                                                  {save, Picture::Save},
                                                  {load, Picture::Load},
                                                  {m_faults, Picture::Faults}};
    for (const auto &picture : pictures)
        picture.first->setIcon(drawnIcon(picture.second));
    m_editorActions = {close, save, load, m_storeMenu->menuAction(), m_recallMenu->menuAction()};
}

void HostWindow::fillPresetMenu(QMenu *menu, const QString &tip, bool store)
{
    menu->setToolTip(tip);
    for (int number = 0; number < PresetCount; ++number) {
        QAction *action = menu->addAction(tr("Preset &%1").arg(number), this,
                                          [this, number, store] { usePreset(number, store); });
        if (!store) // which a slip of the finger must not do
            action->setShortcut(QKeySequence(int(Qt::CTRL) + Qt::Key_0 + number));
    }
}

void HostWindow::createContextMenu()
{
    auto *menu = new QMenu(m_devices);
    menu->addActions({m_open, m_editorActions.at(0)});
    menu->addSeparator();
    menu->addActions({m_editorActions.at(1), m_editorActions.at(2)});
    menu->addSeparator();
    menu->addActions({m_storeMenu->menuAction(), m_recallMenu->menuAction()});
    menu->addSeparator();
    menu->addActions({m_refusals, m_faults});
    menu->addSeparator();
    menu->addAction(tr("Copy &Name"), this,
                    [this] { QGuiApplication::clipboard()->setText(m_devices->selectedDevice()->name()); });
    menu->addAction(tr("Copy &Address"), this, [this] {
        QGuiApplication::clipboard()->setText(m_devices->selectedDevice()->ipAddress().toString());
    });
    connect(m_devices, &DeviceView::menuRequested, menu, [menu](const QPoint &place) { menu->popup(place); });
}

void HostWindow::createToolBar()
{
    QToolBar *bar = addToolBar(tr("Device"));
    bar->setMovable(false);
    bar->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    const int side = style()->pixelMetric(QStyle::PM_SmallIconSize);
    bar->setIconSize({side, side});
    bar->setContextMenuPolicy(Qt::PreventContextMenu);
    bar->addAction(m_open);
    bar->addAction(m_editorActions.at(0));
    bar->addSeparator();
    bar->addAction(m_editorActions.at(1));
    bar->addAction(m_editorActions.at(2));
    bar->addSeparator();
    addMenuButton(bar, m_storeMenu, drawnIcon(Picture::Store), tr("Store Preset"));
    addMenuButton(bar, m_recallMenu, drawnIcon(Picture::Recall), tr("Recall Preset"));
    bar->addSeparator();
    bar->addAction(m_faults);
}

void HostWindow::addMenuButton(QToolBar *bar, QMenu *menu, const QIcon &icon, const QString &text)
{
    auto *button = new QToolButton;
    button->setIcon(icon);
    button->setToolButtonStyle(bar->toolButtonStyle());
    button->setText(text + QStringLiteral("   ")); // room for the arrow
    button->setToolTip(menu->toolTip());
    button->setMenu(menu);
    button->setPopupMode(QToolButton::InstantPopup);
    bar->addWidget(button);
    connect(menu->menuAction(), &QAction::changed, button,
            [button, menu] { button->setEnabled(menu->menuAction()->isEnabled()); });
}

void HostWindow::useInterface(const QString &name)
{
    const InterfaceChoice choice = chooseInterface(name, false);
    m_host->reportProblem(choice.error);
    if (choice.error.isEmpty())
        m_host->useInterface(choice.interface);
    else
        showInterface();
}

void HostWindow::openSelected()
{
    if (KnownDevice *device = m_devices->selectedDevice())
        open(device);
}

void HostWindow::closeSelected()
{
    if (EditorSession *session = selectedSession())
        session->end();
}

void HostWindow::showSelectedRefusals()
{
    if (const KnownDevice *device = m_devices->selectedDevice())
        showRefusals(device->name());
}

void HostWindow::saveSnapshot()
{
    if (EditorSession *session = selectedSession())
        m_snapshots->save(session);
}

void HostWindow::loadSnapshot()
{
    if (EditorSession *session = selectedSession())
        m_snapshots->load(session);
}

void HostWindow::usePreset(int number, bool store)
{
    EditorSession *session = selectedSession();
    if (!session || (store && !askToStore(*session, number)))
        return;
    const QString name = session->deviceName();
    if (!(store ? session->storePreset(number) : session->recallPreset(number)))
        m_host->reportProblem(tr("%1 has no presets. Save a snapshot instead.").arg(name), name);
    else if (store)
        m_host->reportStatus(tr("%1 was asked to store preset %2.").arg(name).arg(number), name);
    else
        m_host->reportStatus(tr("%1 was asked to recall preset %2.").arg(name).arg(number), name);
}

bool HostWindow::askToStore(const EditorSession &session, int number)
{
    const QPointer<const EditorSession> alive(&session);
    PlainBox box(QMessageBox::Question, tr("Store Preset"),
                 tr("Store the settings of %1 as its preset %2?").arg(session.deviceName()).arg(number),
                 QMessageBox::Cancel, this);
    box.setInformativeText(tr("What preset %1 holds now is lost.").arg(number));
    QPushButton *store = box.addButton(tr("&Store"), QMessageBox::AcceptRole);
    store->setObjectName(QStringLiteral("storeButton"));
    box.setDefaultButton(QMessageBox::Cancel);
    box.exec();
    return box.clickedButton() == store && alive;
}

void HostWindow::showFaults()
{
    m_faultPanel->setDevice(selectedSimulated());
    m_faultPanel->show();
    m_faultPanel->raise();
    m_faultPanel->activateWindow();
}

void HostWindow::refreshActions()
{
    const KnownDevice *device = m_devices->selectedDevice();
    const bool served = device && m_host->registry()->factoryFor(device->model());
    m_open->setEnabled(served && (device->isPresent() || selectedSession()));
    for (QAction *action : qAsConst(m_editorActions))
        action->setEnabled(selectedSession());
    m_refusals->setEnabled(device && m_host->refusals()->count(device->name()) > 0);
    SimulatedDevice *simulated = selectedSimulated();
    m_faults->setEnabled(simulated);
    if (m_faultPanel->isVisible() && m_faultPanel->device() != simulated)
        m_faultPanel->setDevice(simulated);
}

} // namespace devhost
