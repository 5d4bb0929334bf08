#include "proof/station.h"

#include "host/plexo_plugin_factory.h"
#include "tests/support/loopback.h"

#include <QApplication>
#include <QTimer>

namespace proof {

namespace {

constexpr const char *BlockSlots[]
    = {"onNetRxGainClicked",  "onUsbInGainClicked", "onBtInGainClicked",   "onNetTxGainClicked",
       "onUsbOutGainClicked", "onBtOutGainClicked", "onMatrixMixerClicked"};

} // namespace

Station::Station(PlexoPluginFactory *factory, int number, quint32 seed)
    : m_factory(factory)
    , m_process(number)
    , m_link(m_process.address(), m_process.port(), seed)
{
    m_device.setName(m_process.name());
    m_device.setType(pxDevice::DEV_TYPE_NETWORK);
    m_device.setIpAddress(m_process.address());
    m_device.setMacAddress(QStringLiteral("02:00:00:00:00:%1").arg(number, 2, 16, QLatin1Char('0')));
    m_device.setProductName(QStringLiteral("TarnKBX"));
    setFirmware(QStringLiteral("1.2.0"));
    m_device.setPresent(true);
    connect(&m_link, &BadLink::cut, this, &Station::follow);
    connect(&m_link, &BadLink::received, this, [this](const QByteArray &reply) {
        m_answered = true;
        if (m_plugin)
            m_plugin->recvVelmarAsciiMsg(m_device.name(), reply);
    });
    connect(&m_link, &BadLink::answered, this,
            [this](const QByteArray &reply) { m_ledger.noteAnswer(reply); });
}

Station::~Station()
{
    close();
}

void Station::open()
{
    if (m_plugin || m_link.isCut())
        return;
    ++m_opened;
    m_plugin = m_factory->createPlugin(nullptr);
    if (m_replyTimeoutMs > 0)
        m_plugin->setVelmarAsciiTimeout(m_replyTimeoutMs);
    connectPlugin();
    m_factory->attachDevice(m_plugin, nullptr, &m_device);
    m_plugin->setNetInterfaceIndex(loopbackInterface().index());
    editor()->show();
}

void Station::connectPlugin()
{
    connect(m_plugin, &PlexoPlugin::sendVelmarAsciiMsg, this,
            [this](const QString &, pxDevice::e_dev_type, const QByteArray &bytes) {
                m_ledger.note(bytes);
                m_answered = false;
                m_link.send(bytes);
            });
    connect(m_plugin, &PlexoPlugin::sendVelmarAsciiMsgTimeout, this, &Station::noteTimeout);
    connect(m_plugin, &PlexoPlugin::pluginRequestClose, this, [this] {
        if (m_hasty)
            close();
        else
            QTimer::singleShot(0, m_plugin, [this] { close(); });
    });
}

void Station::noteTimeout()
{
    ++m_overdue;
    m_ledger.noteTimeout();
    if (m_answered)
        m_ledger.complain(QStringLiteral("a request was answered and is called overdue"));
}

void Station::setFirmware(const QString &version)
{
    m_firmware = version;
    m_device.setFirmwareVersion(pxDevice::versionFromText(version));
}

void Station::close()
{
    delete m_plugin;
    m_blocks.clear();
    m_link.forget();
    m_ledger.forgive();
}

/// As a host does that misses the device's announcements, or hears them again.
void Station::follow(bool gone)
{
    m_device.setPresent(!gone);
}

bool Station::isIdle() const
{
    return m_plugin && !m_plugin->getVelmarAsciiTimer()->isActive() && !m_plugin->hasWaitingQueries()
        && m_link.isQuiet() && m_ledger.isSettled();
}

QString Station::whatWaits() const
{
    return QStringLiteral(
               "pages %6, the channel does not come to rest: time-out %1, queries %2, replies held back %3, "
               "acts %4, last "
               "request %5")
        .arg(m_plugin && m_plugin->getVelmarAsciiTimer()->isActive() ? QStringLiteral("runs")
                                                                     : QStringLiteral("stands"))
        .arg(m_plugin && m_plugin->hasWaitingQueries() ? QStringLiteral("wait") : QStringLiteral("none"))
        .arg(m_link.isQuiet() ? QStringLiteral("none") : QStringLiteral("some"))
        .arg(m_ledger.isSettled() ? QStringLiteral("sent") : QStringLiteral("not sent"))
        .arg(QString::fromUtf8(m_ledger.last()))
        .arg(hasPages() ? QStringLiteral("enabled") : QStringLiteral("disabled"));
}

bool Station::hasPages() const
{
    const QWidget *frame
        = m_plugin ? editor()->findChild<QWidget *>(QStringLiteral("plugin_frame")) : nullptr;
    return frame && frame->isEnabled();
}

bool Station::isLive() const
{
    return hasPages() && isIdle();
}

bool Station::isCalm() const
{
    return hasPages() && m_ledger.isSettled() && (m_answered || m_ledger.last().contains("\"get\""));
}

void Station::openBlock(int index)
{
    if (!m_plugin)
        return;
    const QWidgetList before = QApplication::topLevelWidgets();
    QMetaObject::invokeMethod(editor(), BlockSlots[index]);
    for (QWidget *widget : QApplication::topLevelWidgets()) {
        if (!before.contains(widget) && widget->inherits("BlockEditor"))
            m_blocks.append(widget);
    }
}

void Station::openBlocks()
{
    for (int index = 0; index < int(std::size(BlockSlots)); ++index)
        openBlock(index);
}

QWidget *Station::block(const QString &title) const
{
    for (QWidget *block : m_blocks) {
        if (block && block->isVisible() && block->windowTitle() == title)
            return block;
    }
    return nullptr;
}

QList<QWidget *> Station::windows() const
{
    QList<QWidget *> shown;
    if (m_plugin && editor()->isVisible())
        shown.append(editor());
    for (QWidget *block : m_blocks) {
        if (block && block->isVisible())
            shown.append(block);
    }
    return shown;
}

} // namespace proof
