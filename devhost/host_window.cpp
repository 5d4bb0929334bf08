#include "devhost/host_window.h"

#include "devhost/device_table_model.h"
#include "devhost/device_view.h"
#include "devhost/fault_panel.h"
#include "devhost/host.h"
#include "devhost/known_device.h"
#include "devhost/log_panel.h"
#include "devhost/network_choice.h"
#include "devhost/notice_bar.h"
#include "devhost/plain_text.h"
#include "devhost/refusal_dialog.h"
#include "devhost/snapshot_dialogs.h"
#include "devhost/upload_port.h"
#include "devhost/window_memory.h"

#include <QComboBox>
#include <QLabel>
#include <QSplitter>
#include <QStatusBar>
#include <QStyle>
#include <QVBoxLayout>

#include <memory>

namespace devhost {

namespace {

constexpr QSize StartSize(1120, 680);
constexpr int StatusMs = 15000; // long enough to be read twice
constexpr int ProblemMs = 60000;

const QLatin1String OpenKey("open-editors");
const QLatin1String ChosenKey("chosen-device");

} // namespace

HostWindow::HostWindow(Host *host, WindowMemory *memory, const QString &snapshotFolder)
    : m_host(host)
    , m_memory(memory)
    , m_model(new DeviceTableModel(host, this))
    , m_devices(new DeviceView(m_model, this))
    , m_log(new LogPanel(host->log(), host->requests(), memory, this))
    , m_notice(new NoticeBar(this))
    , m_snapshots(new SnapshotDialogs(snapshotFolder, memory, this))
    , m_interfaces(new QComboBox(this))
    , m_status(new QLabel(this))
    , m_counts(new QLabel(this))
    , m_faultPanel(new FaultPanel(this))
{
    setWindowTitle(tr("Plexo Development Host"));
    setObjectName(QStringLiteral("hostWindow"));
    resize(StartSize);
    auto *splitter = new QSplitter(Qt::Vertical, this);
    splitter->setObjectName(QStringLiteral("hostSplitter"));
    markRemembered(splitter);
    splitter->addWidget(createDevicePart());
    splitter->addWidget(m_log);
    splitter->setStretchFactor(1, 1);
    splitter->setSizes({250, 380});
    splitter->setChildrenCollapsible(false);
    splitter->setContentsMargins(8, 8, 8, 4);
    setCentralWidget(splitter);
    createMenus();
    createContextMenu();
    createToolBar();
    setUpStatusBar();
    setUpConnections();
    setUpMemory();
    refreshActions();
    showInterface();
    m_notice->setNotice(QStringLiteral("uploads"), uploadPortProblem());
    m_devices->setFocus();
}

QWidget *HostWindow::createDevicePart()
{
    auto *part = new QWidget(this);
    auto *column = new QVBoxLayout(part);
    column->setContentsMargins(0, 0, 0, 6);
    column->addWidget(m_notice);
    auto *head = new QHBoxLayout;
    auto *title = new QLabel(tr("Devices"), part);
    title->setProperty("role", QStringLiteral("heading"));
    fillInterfaceChooser();
    head->addWidget(title);
    head->addStretch(1);
    head->addWidget(m_interfaces);
    column->addLayout(head);
    column->addWidget(m_devices);
    return part;
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

void HostWindow::setUpStatusBar()
{
    m_status->setObjectName(QStringLiteral("hostStatus"));
    m_status->setTextFormat(Qt::PlainText);
    m_counts->setTextFormat(Qt::PlainText);
    m_status->setTextInteractionFlags(Qt::TextSelectableByMouse);
    statusBar()->setContentsMargins(8, 0, 8, 0);
    statusBar()->addWidget(m_status, 1);
    statusBar()->addPermanentWidget(m_counts);
}

void HostWindow::setUpConnections()
{
    connect(m_host, &Host::problem, this, [this](const QString &text) { showStatus(text, true); });
    connect(m_host, &Host::status, this, [this](const QString &text) { showStatus(text, false); });
    connect(m_log, &LogPanel::problem, this, [this](const QString &text) { m_host->reportProblem(text); });
    connect(m_log, &LogPanel::saved, this, [this](const QString &text) { m_host->reportStatus(text); });
    connect(m_log, &LogPanel::sendRequested, this, [this](const QString &name, const QByteArray &message) {
        m_log->showSent(m_host->sendByHand(name, message));
    });
    connect(m_devices, &DeviceView::selectionMoved, this, [this] {
        const KnownDevice *device = m_devices->selectedDevice();
        m_log->setTarget(device ? device->name() : QString());
    });
    connect(m_host, &Host::interfaceChanged, this, &HostWindow::showInterface);
    connect(m_snapshots, &SnapshotDialogs::saved, this,
            [this](const QString &text) { m_host->reportStatus(text); });
    connect(m_devices, &DeviceView::openRequested, this, &HostWindow::open);
    connect(m_devices, &DeviceView::selectionMoved, this, &HostWindow::refreshActions);
    connect(m_model, &QAbstractItemModel::dataChanged, this, [this] {
        refreshActions();
        refreshCounts();
    });
    connect(m_model, &QAbstractItemModel::rowsInserted, this, &HostWindow::refreshCounts);
    connect(m_model, &QAbstractItemModel::rowsRemoved, this, &HostWindow::refreshCounts);
    connect(m_host->sessions(), &EditorSessions::opened, this, [this](EditorSession *session) {
        const QString name = session->deviceName();
        restorePages(session);
        connect(session, &EditorSession::deviceViewRequested, this, [this, name] { showDeviceList(name); });
    });
    connect(m_host->sessions(), &EditorSessions::closed, this,
            [this](const QString &name) { m_notice->setNotice(QStringLiteral("session ") + name, {}); });
    connect(m_host, &Host::sessionNotice, this, [this](const QString &name, const QString &text) {
        m_notice->setNotice(QStringLiteral("session ") + name, text);
    });
    connect(m_host->refusals(), &Refusals::refused, this, [this](const QString &name, const QString &text) {
        m_notice->setNotice(QStringLiteral("refused ") + name, text, tr("Show List"),
                            [this, name] { showRefusals(name); });
    });
}

void HostWindow::setUpMemory()
{
    markRemembered(m_devices);
    m_memory->restore(this);
    m_memory->followWindows(this);
    m_toReopen = m_memory->texts(OpenKey);
    m_devices->prefer(m_memory->text(ChosenKey));
    connect(m_host->finder(), &DeviceFinder::found, this, [this](const KnownDevice *device) {
        // Not from within the reading of announcements.
        if (m_toReopen.removeOne(device->name()))
            QMetaObject::invokeMethod(
                this, [this, name = device->name()] { reopen(name); }, Qt::QueuedConnection);
    });
    m_statusEnd.setSingleShot(true);
    connect(&m_statusEnd, &QTimer::timeout, this, [this] { showStatus(QString(), false); });
    showStatus(m_memory->problem(), true);
}

void HostWindow::reopen(const QString &deviceName)
{
    KnownDevice *device = m_host->finder()->device(deviceName);
    if (device && device->isPresent() && !m_host->sessions()->session(deviceName))
        open(device);
}

/// An editor turns to its first page when it has read its device, which is the first thing that it reports.
void HostWindow::restorePages(EditorSession *session)
{
    const auto reported = std::make_shared<QMetaObject::Connection>();
    *reported = connect(session, &EditorSession::statusChanged, this, [this, session, reported] {
        if (session->status().isEmpty())
            return;
        disconnect(*reported);
        QTimer::singleShot(0, session, [this, session] {
            if (QWidget *editor = session->editor())
                m_memory->restorePages(editor);
        });
    });
}

void HostWindow::closeEvent(QCloseEvent *event)
{
    m_memory->keep(this);
    m_memory->keep(OpenKey, m_host->sessions()->openDevices());
    if (const KnownDevice *device = m_devices->selectedDevice())
        m_memory->keep(ChosenKey, device->name());
    m_host->sessions()->closeAll();
    QMainWindow::closeEvent(event);
    emit closed();
}

void HostWindow::open(KnownDevice *device)
{
    const QString name = device->name(); // which may be gone afterwards
    m_host->reportProblem(m_host->sessions()->open(device), name);
}

EditorSession *HostWindow::selectedSession() const
{
    const KnownDevice *device = m_devices->selectedDevice();
    return device ? m_host->sessions()->session(device->name()) : nullptr;
}

SimulatedDevice *HostWindow::selectedSimulated() const
{
    const KnownDevice *device = m_devices->selectedDevice();
    return device ? m_host->simulated()->device(device->name()) : nullptr;
}

void HostWindow::refreshCounts()
{
    int present = 0;
    int open = 0;
    for (const KnownDevice *device : m_host->finder()->devices()) {
        present += device->isPresent() ? 1 : 0;
        open += m_host->sessions()->session(device->name()) ? 1 : 0;
    }
    m_counts->setText(tr("%1 present, %2 lost, %3 open on %4")
                          .arg(present)
                          .arg(m_host->finder()->devices().size() - present)
                          .arg(open)
                          .arg(m_host->interface().humanReadableName()));
}

void HostWindow::showRefusals(const QString &deviceName)
{
    RefusalDialog dialog(deviceName, *m_host->refusals(), this);
    m_host->refusals()->clear(deviceName);
    m_notice->setNotice(QStringLiteral("refused ") + deviceName, {});
    dialog.exec();
}

void HostWindow::showInterface()
{
    m_interfaces->setCurrentIndex(m_interfaces->findData(m_host->interface().name()));
    m_devices->setEmptyText(
        tr("Looking for devices on %1 ...\nA device announces itself once a second. Nothing here? Check its "
           "cable and choose the network interface it is connected to, or start the host with --simulate 1.")
            .arg(m_host->interface().humanReadableName()));
    refreshCounts();
}

void HostWindow::showDeviceList(const QString &deviceName)
{
    m_devices->select(deviceName);
    raise();
    activateWindow();
    m_devices->setFocus(Qt::OtherFocusReason);
}

void HostWindow::showStatus(const QString &text, bool highlight)
{
    m_status->setText(text);
    m_status->setToolTip(plainTip(text));
    m_statusEnd.start(highlight ? ProblemMs : StatusMs);
    if (m_status->property("problem").toBool() == highlight) // choosing the colour anew takes long
        return;
    m_status->setProperty("problem", highlight);
    m_status->style()->polish(m_status);
}

} // namespace devhost
