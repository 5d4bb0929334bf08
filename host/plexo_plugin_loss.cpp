// How PlexoPlugin ends when its device stops answering or disappears.

#include "host/plexo_plugin.h"

#include "host/modal_box.h"

#include <QTimer>

namespace {

BoxText timeoutQuestion(const QString &device)
{
    BoxText box;
    box.title = device;
    box.text = QStringLiteral("Warning:  Communications with the device have timed out.");
    box.informativeText = QStringLiteral("Do you want to retry or cancel?");
    box.detailedText = QStringLiteral("Canceling the operation will close the control plugin.");
    box.buttons = QMessageBox::Retry | QMessageBox::Cancel;
    box.defaultButton = QMessageBox::Retry;
    return box;
}

BoxText communicationsFailed(const QString &device)
{
    BoxText box;
    box.title = device;
    box.text = QStringLiteral("Warning:  Communications with the device have failed.");
    box.informativeText
        = QStringLiteral("The control plugin will be closed, as the device\r\n has been lost on the "
                         "currently selected network.");
    box.detailedText = QStringLiteral("Closing the control plugin.");
    return box;
}

} // namespace

/// False once the plugin is gone or, after a change of device, what was asked or told concerns it no more.
class PlexoPlugin::Attachment
{
public:
    explicit Attachment(PlexoPlugin *plugin)
        : m_plugin(plugin)
        , m_number(plugin->m_attachment)
    {
    }
    explicit operator bool() const { return m_plugin && m_plugin->m_attachment == m_number; }

private:
    QPointer<PlexoPlugin> m_plugin;
    int m_number;
};

void PlexoPlugin::closeAsDeviceIsLost()
{
    const Attachment same(this);
    emit switchToDeviceView();
    if (same)
        runModalBox(communicationsFailed(getDeviceName()), this);
    if (same)
        emit pluginRequestClose();
}

void PlexoPlugin::askAfterTimeout(RequestSide &side, Operation retry)
{
    const Attachment same(this);
    QMessageBox::StandardButton answer = QMessageBox::NoButton;
    if (isDevicePresent())
        answer = runModalBox(timeoutQuestion(getDeviceName()), this);
    if (!same)
        return;
    if (!isDevicePresent())
        closeAsDeviceIsLost();
    else if (answer == QMessageBox::Retry)
        (this->*retry)();
    else if (answer == QMessageBox::Cancel)
        emit pluginRequestClose();
    if (!same)
        return;
    side.busy = false;
    side.timeoutGuard = false;
}

void PlexoPlugin::handleVelmarAsciiRequestTimeout()
{
    if (m_text.timeoutGuard)
        return;
    const Attachment same(this);
    m_text.timer()->stop();
    m_text.timeoutGuard = true;
    emit sendVelmarAsciiMsgTimeout();
    if (!same)
        return;
    if (!m_noConnect) {
        askAfterTimeout(m_text, &PlexoPlugin::retryVelmarAsciiPendingRequest);
        return;
    }
    m_text.busy = false;
    m_text.timeoutGuard = false;
}

void PlexoPlugin::handleVelmarAES67RequestTimeout()
{
    if (m_aes67.timeoutGuard)
        return;
    m_aes67.timer()->stop();
    m_aes67.timeoutGuard = true;
    askAfterTimeout(m_aes67, &PlexoPlugin::retryVelmarAES67PendingRequest);
}

void PlexoPlugin::devicePresenceChanged()
{
    const QPointer<PlexoPlugin> alive(this);
    emit deviceAvailabilityChanged();
    if (!alive || !m_device || m_device->isPresent() || m_text.timeoutGuard || m_aes67.timeoutGuard)
        return;
    // They stay set until the next device is attached: whatever times out from here on must not ask about
    // one that is gone.
    m_text.timeoutGuard = true;
    m_aes67.timeoutGuard = true;
    closeAsDeviceIsLost();
}
