#pragma once

#include "host/plexo_plugin.h"
#include "proof/bad_link.h"
#include "proof/device_process.h"
#include "proof/ledger.h"

#include <QList>
#include <QPointer>

class PlexoPluginFactory;

namespace proof {

/// A device, the way to it, and what a host would hold for it: the device object and, most of the time, a
/// plugin object with its windows.
class Station : public QObject
{
    Q_OBJECT

public:
    Station(PlexoPluginFactory *factory, int number, quint32 seed);
    ~Station() override;

    /// Starts the device; false when it does not come up.
    bool start(const QStringList &options) { return m_process.start(options); }

    /// Ms until a request is overdue, for the plugin objects from now on; 0 leaves the plugin's own.
    void setReplyTimeout(int ms) { m_replyTimeoutMs = ms; }
    /// Whether the host destroys a plugin object that wants to be closed at once, within its signal.
    void setHasty(bool hasty) { m_hasty = hasty; }

    /// Of the device's firmware, as announced.
    void setFirmware(const QString &version);
    QString firmware() const { return m_firmware; }

    /// Creates and attaches a plugin object and shows its editor; nothing while the device is away.
    void open();
    void close();
    bool isOpen() const { return m_plugin; }
    /// Whether the whole device has been read and nothing is on its way.
    bool isLive() const;
    /// Whether nothing waits for the device.
    bool isIdle() const;
    /// Whether the pages can be used and only what polls ask is on its way.
    bool isCalm() const;
    /// What keeps it from being idle, for reports.
    QString whatWaits() const;

    PlexoPlugin *plugin() const { return m_plugin; }
    QWidget *editor() const { return m_plugin ? m_plugin->getPluginWidget() : nullptr; }
    const DeviceProcess &process() const { return m_process; }
    BadLink *link() { return &m_link; }
    Ledger *ledger() { return &m_ledger; }
    const pxDevice &device() const { return m_device; }

    /// Opens all seven block windows.
    void openBlocks();
    void openBlock(int index);
    /// The block window of that title; null when it is not open.
    QWidget *block(const QString &title) const;
    /// Editor and block windows that are shown.
    QList<QWidget *> windows() const;

    int opened() const { return m_opened; }
    int overdue() const { return m_overdue; }

private:
    void follow(bool gone);
    bool hasPages() const;
    void connectPlugin();
    void noteTimeout();

    PlexoPluginFactory *m_factory;
    DeviceProcess m_process;
    BadLink m_link;
    Ledger m_ledger;
    pxDevice m_device;
    QPointer<PlexoPlugin> m_plugin;
    QList<QPointer<QWidget>> m_blocks;
    int m_replyTimeoutMs = 0;
    int m_opened = 0;
    int m_overdue = 0;
    bool m_hasty = false;
    bool m_answered = false; ///< the request sent last
    QString m_firmware;
};

} // namespace proof
