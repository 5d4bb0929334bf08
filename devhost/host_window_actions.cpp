// The menus, the tool bar and what their actions do.

#include "devhost/device_view.h"
#include "devhost/fault_choices.h"
#include "devhost/host.h"
#include "devhost/host_window.h"
#include "devhost/known_device.h"
#include "devhost/log_panel.h"
#include "devhost/network_choice.h"
#include "devhost/notice_bar.h"
#include "devhost/plain_text.h"
#include "devhost/snapshot_dialogs.h"
#include "devhost/upload_port.h"
#include "host/plexo_plugin_factory.h"

#include <QActionGroup>
#include <QComboBox>
#include <QDir>
#include <QMenuBar>
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

void HostWindow::createActions()
{
    m_deviceMenu = menuBar()->addMenu(tr("&Device"));
    fillDeviceMenu(m_deviceMenu);
    m_deviceMenu->setToolTipsVisible(true);
    QMenu *log = menuBar()->addMenu(tr("&Log"));
    log->addAction(tr("&Filter"), m_log, &LogPanel::focusFilter, QKeySequence::Find);
    log->addAction(tr("&Copy Lines"), m_log, &LogPanel::copySelected, tr("Ctrl+Shift+C"));
    log->addAction(tr("&Save..."), m_log, &LogPanel::saveShown, tr("Ctrl+Shift+L"));
    log->addAction(tr("C&lear"), m_host->log(), &CommunicationLog::clear);
    QMenu *help = menuBar()->addMenu(tr("&Help"));
    help->setToolTipsVisible(true);
    addAction(help, tr("Loaded &Plugins"), {}, tr("Show the plugins in use"), &HostWindow::showPlugins);
    addAction(help, tr("Voice Cue &Uploads"), {}, tr("Show whether UDP port 69 can be used"),
              &HostWindow::showUploadAdvice);
    connect(m_devices, &QWidget::customContextMenuRequested, this,
            [this](const QPoint &at) { m_deviceMenu->popup(m_devices->viewport()->mapToGlobal(at)); });
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
    m_faultMenu = menu->addMenu(tr("Simulated &Faults"));
    fillFaultMenu();
    menu->addSeparator();
    menu->addAction(tr("&Quit"), this, &QWidget::close, QKeySequence::Quit);
    m_editorActions = {close, save, load, m_storeMenu->menuAction(), m_recallMenu->menuAction()};
}

void HostWindow::fillPresetMenu(QMenu *menu, const QString &tip, bool store)
{
    menu->setToolTip(tip);
    for (int number = 0; number < PresetCount; ++number) {
        QAction *action = menu->addAction(tr("Preset &%1").arg(number), this,
                                          [this, number, store] { usePreset(number, store); });
        action->setShortcut(
            QKeySequence((store ? int(Qt::CTRL | Qt::SHIFT) : int(Qt::CTRL)) + Qt::Key_0 + number));
    }
}

void HostWindow::fillFaultMenu()
{
    m_faultMenu->setToolTip(tr("Let the simulated device misbehave; it starts anew with its settings kept"));
    m_faultMenu->setToolTipsVisible(true);
    auto *group = new QActionGroup(m_faultMenu);
    for (const FaultChoice &choice : faultChoices()) {
        QAction *action = m_faultMenu->addAction(
            choice.text, this, [this, choice] { applyFaults(choice.text, choice.arguments); });
        action->setToolTip(choice.tip);
        action->setCheckable(true);
        action->setData(choice.arguments);
        group->addAction(action);
    }
}

void HostWindow::createToolBar()
{
    QToolBar *bar = addToolBar(tr("Device"));
    bar->setMovable(false);
    bar->setContextMenuPolicy(Qt::PreventContextMenu);
    bar->addAction(m_open);
    bar->addAction(m_editorActions.at(0));
    bar->addSeparator();
    bar->addAction(m_editorActions.at(1));
    bar->addAction(m_editorActions.at(2));
    bar->addSeparator();
    addMenuButton(bar, m_storeMenu, tr("Store Preset"));
    addMenuButton(bar, m_recallMenu, tr("Recall Preset"));
    addMenuButton(bar, m_faultMenu, tr("Faults"));
    auto *gap = new QWidget;
    gap->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
    bar->addWidget(gap);
    fillInterfaceChooser();
    bar->addWidget(m_interfaces);
}

void HostWindow::addMenuButton(QToolBar *bar, QMenu *menu, const QString &text)
{
    auto *button = new QToolButton;
    button->setText(text + QStringLiteral("   ")); // room for the arrow
    button->setToolTip(menu->toolTip());
    button->setMenu(menu);
    button->setPopupMode(QToolButton::InstantPopup);
    bar->addWidget(button);
    connect(menu->menuAction(), &QAction::changed, button,
            [button, menu] { button->setEnabled(menu->menuAction()->isEnabled()); });
}

void HostWindow::fillInterfaceChooser()
{
    for (const QNetworkInterface &interface : usableInterfaces())
        m_interfaces->addItem(tr("Interface: %1").arg(interface.humanReadableName()), interface.name());
    m_interfaces->setObjectName(QStringLiteral("interfaceChooser"));
    m_interfaces->setToolTip(tr("Devices are looked for on this network interface"));
    m_interfaces->setAccessibleName(tr("Network interface"));
    m_interfaces->setMinimumWidth(130);
    connect(m_interfaces, QOverload<int>::of(&QComboBox::activated), this,
            [this] { useInterface(m_interfaces->currentData().toString()); });
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
    if (!session)
        return;
    const QString name = session->deviceName();
    if (!(store ? session->storePreset(number) : session->recallPreset(number)))
        m_host->reportProblem(tr("%1 has no presets. Save a snapshot instead.").arg(name), name);
    else if (store)
        m_host->reportStatus(tr("%1 was asked to store preset %2.").arg(name).arg(number), name);
    else
        m_host->reportStatus(tr("%1 was asked to recall preset %2.").arg(name).arg(number), name);
}

void HostWindow::applyFaults(const QString &text, const QStringList &arguments)
{
    SimulatedDevice *simulated = selectedSimulated();
    if (!simulated)
        return;
    simulated->start(arguments);
    m_host->reportStatus(tr("%1 starts anew: %2.").arg(simulated->name(), text), simulated->name());
    refreshActions();
}

void HostWindow::refreshActions()
{
    const KnownDevice *device = m_devices->selectedDevice();
    const bool served = device && m_host->registry()->factoryFor(device->model());
    m_open->setEnabled(served && (device->isPresent() || selectedSession()));
    for (QAction *action : qAsConst(m_editorActions))
        action->setEnabled(selectedSession());
    const SimulatedDevice *simulated = selectedSimulated();
    m_faultMenu->menuAction()->setEnabled(simulated);
    for (QAction *action : m_faultMenu->actions())
        action->setChecked(simulated && action->data().toStringList() == simulated->faults());
}

void HostWindow::showPlugins()
{
    QString text;
    for (const LoadedPlugin &plugin : m_host->registry()->plugins()) {
        PlexoPluginFactory &factory = *plugin.factory;
        text += tr("%1 %2 by %3\nModels: %4\n%5\n\n")
                    .arg(factory.getPluginName(), factory.getVersion(), factory.getVendorName(),
                         factory.getSupportedModels().join(QStringLiteral(", ")), QDir::toNativeSeparators(plugin.file));
    }
    if (text.isEmpty())
        text = tr("No plugin is loaded. Start the host with --plugin and a plugin file.");
    PlainBox(QMessageBox::Information, tr("Loaded Plugins"), text.trimmed(), QMessageBox::Ok, this).exec();
}

void HostWindow::showUploadAdvice()
{
    const QString problem = uploadPortProblem();
    m_notice->setNotice(problem);
    if (problem.isEmpty())
        PlainBox(QMessageBox::Information, tr("Voice Cue Uploads"),
                 tr("UDP port 69 is free: voice cues can be uploaded to devices."), QMessageBox::Ok, this)
            .exec();
}

} // namespace devhost
