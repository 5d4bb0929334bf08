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

void PlexoPlugin::closeAsDeviceIsLost()
{
    const QPointer<PlexoPlugin> alive(this);
    emit switchToDeviceView();
    if (alive)
        runModalBox(communicationsFailed(getDeviceName()), this);
    if (alive)
        emit pluginRequestClose();
}

void PlexoPlugin::askAfterTimeout(RequestSide &side, Operation retry)
{
    const QPointer<PlexoPlugin> alive(this);
    if (!isDevicePresent()) {
        closeAsDeviceIsLost();
    } else {
        const int attachment = m_attachment;
        const QMessageBox::StandardButton answer = runModalBox(timeoutQuestion(getDeviceName()), this);
        if (!alive)
            return;
        if (m_attachment != attachment) { // the answer is about a device that is no longer attached
            side.timeoutGuard = false;
            return;
        }
        if (!isDevicePresent())
            closeAsDeviceIsLost();
        else if (answer == QMessageBox::Retry)
            (this->*retry)();
        else if (answer == QMessageBox::Cancel)
            emit pluginRequestClose();
    }
    if (!alive)
        return;
    side.busy = false;
    side.timeoutGuard = false;
}

void PlexoPlugin::handleVelmarAsciiRequestTimeout()
{
    if (m_text.timeoutGuard)
        return;
    const QPointer<PlexoPlugin> alive(this);
    m_text.timer()->stop();
    m_text.timeoutGuard = true;
    emit sendVelmarAsciiMsgTimeout();
    if (!alive)
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
    // They stay set: whatever times out from here on must not ask about a device that is gone.
    m_text.timeoutGuard = true;
    m_aes67.timeoutGuard = true;
    closeAsDeviceIsLost();
}
