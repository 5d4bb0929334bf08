// Life cycle of the editor window: construction, attaching, querying, ending.

#include "editor/tarnkbx_main_window.h"

#include "dsp/block_view.h"
#include "editor/bt_priority_pairing_dialog.h"
#include "editor/editor_keys.h"
#include "editor/fitting_area.h"
#include "editor/widgets_in_use.h"
#include "host/plexo_plugin.h"
#include "protocol/derived_state_machine.h"
#include "widgets/wheel_guard.h"

#include "ui_main_window.h"

#include <QtQml>

#include <utility>

namespace {

constexpr int FirstPage = 0;
constexpr int DspPage = 3;

void registerBackEnd()
{
    static const int type = qmlRegisterType<TarnKBX_MainWindow>("TarnKBXBackEnd", 1, 0, "TarnKBXBackEnd");
    Q_UNUSED(type)
}

} // namespace

TarnKBX_MainWindow::TarnKBX_MainWindow(QWidget *parent)
    : QMainWindow(parent)
    , ui(new Ui::TarnKBX_MainWindow)
{
    registerBackEnd();
    m_plugin = qobject_cast<PlexoPlugin *>(parent);
    ui->setupUi(this);
    setCentralWidget(new FittingArea(takeCentralWidget()));
    vm::wheelNeedsFocus(this);
    new EditorKeys(this, ui->close_pushButton, ui->tabWidget);
    watchFields();
    prepareTimers();
    ui->DSP->layout()->addWidget(createBlockView(this, this));
    hideUnusedWidgets();
    ui->tabWidget->setCurrentIndex(FirstPage);
    createPriorityDialog();
    connectPlugin();
    connect(this, &TarnKBX_MainWindow::dataChanged, this, &TarnKBX_MainWindow::onDataChanged);
    connectBlockEditors();
    ui->dev_model->setText(QStringLiteral("KBX"));
    updatePluginStatus(tr("Device connected..."), false);
}

TarnKBX_MainWindow::~TarnKBX_MainWindow()
{
    m_blocks.closeAll();
    if (m_plugin && m_priorityDialog)
        disconnect(m_priorityDialog, nullptr, m_plugin, nullptr);
    delete m_priorityDialog;
    m_priorityDialog = nullptr;
    leaveWidgetsInUse();
}

/// Held while a message is handed to the host and while a box is open: what may destroy the window.
std::shared_ptr<WidgetsInUse> TarnKBX_MainWindow::keepWidgets()
{
    auto held = m_widgetsInUse.lock();
    if (!held)
        m_widgetsInUse = held = std::make_shared<WidgetsInUse>();
    return held;
}

void TarnKBX_MainWindow::leaveWidgetsInUse()
{
    const auto held = m_widgetsInUse.lock();
    if (!held)
        return;
    // Nothing that happens to them from here on may reach this window.
    for (QWidget *widget : centralWidget()->findChildren<QWidget *>())
        widget->disconnect(this);
    held->orphans = takeCentralWidget();
}

void TarnKBX_MainWindow::prepareTimers()
{
    using W = TarnKBX_MainWindow;
    const struct
    {
        QTimer &timer;
        const char *name;
        int intervalMs;
        bool repeats;
        void (W::*timeout)();
    } timers[] = {
        {m_queryRetryTimer, "query_retry_timer", 500, false, &W::handle_query_finished},
        {m_meteringRequestTimer, "metering_request_timer", 5000, true, &W::request_level_msgs},
        {m_statusPollTimer, "status_poll_timer", 2000, true, &W::onStatusPoll},
        {m_mixerChangeTimer, "mixer_change_timer", 250, false, &W::handle_mixer_changed},
        {m_closeTimer, "close_timer", 500, false, &W::request_close},
        {m_rebootTimer, "reboot_timer", 500, false, &W::on_close_pushButton_clicked},
        {m_resetTimer, "reset_timer", 1000, false, &W::request_close},
    };
    for (const auto &row : timers) {
        row.timer.setObjectName(QLatin1String(row.name));
        row.timer.setInterval(row.intervalMs);
        row.timer.setSingleShot(!row.repeats);
        // A coarse timer would let the device's clock see polls up to 5 % late.
        row.timer.setTimerType(Qt::PreciseTimer);
        connect(&row.timer, &QTimer::timeout, this, row.timeout);
    }
}

void TarnKBX_MainWindow::createPriorityDialog()
{
    m_priorityDialog = new BtPriorityPairingDialog(deviceName(), this);
    if (m_plugin)
        connect(m_priorityDialog, &BtPriorityPairingDialog::sendVelmarAsciiSetRequest, m_plugin,
                &PlexoPlugin::queueVelmarAsciiMsg);
}

/// The form carries controls of the model's siblings that this model does not offer.
void TarnKBX_MainWindow::hideUnusedWidgets()
{
    QWidget *const unused[] = {
        ui->dev_addr_widget,
        ui->bt_enable_pin_checkBox,
        ui->bt_pin_lineEdit,
        ui->bt_apply_pin_pushButton,
        ui->voice_cue_en_label,
        ui->voice_cue_en_comboBox,
        ui->vc_pair_init_file_lineEdit,
        ui->vc_pair_end_file_lineEdit,
        ui->vc_pair_success_file_lineEdit,
        ui->vc_connect_failed_file_lineEdit,
        ui->meters_enable_pushButton,
        ui->danteLock_image,
        ui->danteLock_image_label,
        ui->lockp_checkBox,
    };
    ui->meters_enable_pushButton->setChecked(false);
    for (QWidget *widget : unused)
        widget->hide();
}

void TarnKBX_MainWindow::connectPlugin()
{
    if (!m_plugin)
        return;
    connect(m_plugin, &PlexoPlugin::deviceChanged, this, &TarnKBX_MainWindow::handle_device_changed,
            Qt::QueuedConnection);
    connect(m_plugin, &PlexoPlugin::updatePluginStatus, this, &TarnKBX_MainWindow::updatePluginStatus);
}

void TarnKBX_MainWindow::resizeEvent(QResizeEvent *event)
{
    QMainWindow::resizeEvent(event);
    handle_device_changed();
}

void TarnKBX_MainWindow::handle_device_changed()
{
    const pxDevice *device = m_plugin ? m_plugin->getDevice() : nullptr;
    if (m_awaitingFirstQuery) {
        // A query without a device asks nothing, so the first one is still to come.
        m_awaitingFirstQuery = !device;
        reloadDevice();
    } else if (m_query->device() != device) {
        forgetDevice();
        reloadDevice();
    }
    m_priorityDialog->setDeviceName(deviceName());
    m_blocks.setDeviceName(deviceName());
    ui->dev_name->setText(device ? device->name() : QString());
    ui->dev_ip->setText(device ? device->ipAddress().toString() : QString());
    ui->dev_mac->setText(device ? device->macAddress() : QString());
}

void TarnKBX_MainWindow::forgetDevice()
{
    for (QTimer *timer :
         {&m_meteringRequestTimer, &m_mixerChangeTimer, &m_closeTimer, &m_rebootTimer, &m_resetTimer})
        timer->stop();
    m_blocks.closeAll();
    m_priorityDialog->hide();
    m_setHandlers.clear();
    m_bluetoothName.clear();
    ui->bt_friendly_name_lineEdit->clear();
    *m_caches = SectionCaches();
}

void TarnKBX_MainWindow::reloadDevice()
{
    m_statusPollTimer.stop();
    ui->plugin_frame->setEnabled(false);
    ui->DSP->hide();
    restartQuery();
}

void TarnKBX_MainWindow::restartQuery()
{
    m_queryFinished = false;
    m_queryRetryTimer.stop();
    withdrawPolls();
    delete m_query;
    m_query = new DerivedStateMachine(this);
    connect(m_query, &DerivedStateMachine::sendVelmarAsciiGetRequest, this,
            &TarnKBX_MainWindow::handleSmGetRequest);
    connect(m_query, &DerivedStateMachine::sm_finished, this, &TarnKBX_MainWindow::handle_query_finished);
    if (m_plugin) {
        connect(m_plugin->getVelmarAsciiTimer(), &QTimer::timeout, m_query, &DerivedStateMachine::timedOut);
        m_query->setDevice(m_plugin->getDevice());
    }
    m_query->buildStateMachine();
    m_query->start();
}

/// The query counts replies, so none to a poll may be among them.
void TarnKBX_MainWindow::withdrawPolls()
{
    const bool hasPolled = std::exchange(m_hasPolled, false);
    if (hasPolled && m_plugin)
        m_plugin->withdrawQueries();
    m_awaitingPollReply = hasPolled && m_plugin && m_plugin->isQueryInFlight();
}

void TarnKBX_MainWindow::handleSmGetRequest(QString dev_name, QByteArray bytes)
{
    if (m_plugin)
        m_plugin->queueVelmarAsciiQueryMsg(dev_name, bytes);
}

void TarnKBX_MainWindow::handle_query_finished()
{
    // The query counts replies; the mixer's may still be on their way.
    if (m_caches->value(Section::Mixer).isUndefined()) {
        m_queryRetryTimer.start();
        return;
    }
    const QPointer<TarnKBX_MainWindow> alive(this);
    m_queryFinished = true;
    ui->plugin_frame->setEnabled(true);
    if (m_plugin)
        m_plugin->setSettingsChanged(false);
    if (alive && m_plugin)
        m_plugin->setPluginFlag(false);
    if (!alive)
        return;
    updatePluginStatus(tr("Device connected..."), false);
    ui->tabWidget->setCurrentIndex(DspPage);
    ui->DSP->show();
    ui->tabWidget->setCurrentIndex(FirstPage);
    emit dataChanged();
    if (alive)
        request_level_msgs();
    if (!alive)
        return;
    m_meteringRequestTimer.start();
    m_statusPollTimer.start();
}

void TarnKBX_MainWindow::onStatusPoll()
{
    // A slow device is not asked again before it has been asked all of the last poll.
    if (!m_query || (m_plugin && m_plugin->hasWaitingQueries()))
        return;
    m_hasPolled = true;
    m_query->enter_status_voice_cue();
    m_query->enter_status_usb();
    // The frame around it may be disabled for other reasons; only the tab's own state tells of the interface.
    if (ui->bt_tabWidget->isEnabledTo(ui->bt_tabWidget->parentWidget()))
        m_query->enter_status_bluetooth();
}

void TarnKBX_MainWindow::updatePluginStatus(QString msg, bool highlight)
{
    ui->statusbar->showMessage(msg);
    ui->statusbar->setStyleSheet(
        highlight ? QStringLiteral("border: 2px solid QLinearGradient(x1: 0, y1: 0, x2: 0, y2: 1, "
                                   "stop: 0 #ff9f07, stop: 1 #ff7707);")
                  : QStringLiteral("border: none;"));
}
