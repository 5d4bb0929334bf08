// How PlexoPlugin ends when its device stops answering or disappears.

#include "host/plexo_plugin.h"

#include "host/modal_box.h"

namespace {

BoxText timeoutQuestion(const QString &device)
{
    BoxText box;
    box.title = device;
    box.text = PlexoPlugin::tr("Warning:  Communications with the device have timed out.");
    box.informativeText = PlexoPlugin::tr("Do you want to retry or cancel?");
    box.detailedText = PlexoPlugin::tr("Canceling the operation will close the control plugin.");
    box.buttons = QMessageBox::Retry | QMessageBox::Cancel;
    box.defaultButton = QMessageBox::Retry;
    return box;
}

BoxText communicationsFailed(const QString &device)
{
    BoxText box;
    box.title = device;
    box.text = PlexoPlugin::tr("Warning:  Communications with the device have failed.");
    box.informativeText
        = PlexoPlugin::tr("The control plugin will be closed, as the device\r\n has been lost on the "
                          "currently selected network.");
    box.detailedText = PlexoPlugin::tr("Closing the control plugin.");
    return box;
}

} // namespace

/// False if the plugin or its device is another one meanwhile.
bool PlexoPlugin::tellOfLoss()
{
    const QPointer<QObject> same(m_attachment.get());
    emit switchToDeviceView();
    if (same)
        runModalBox(communicationsFailed(getDeviceName()), this, getPluginWidget());
    return same;
}

void PlexoPlugin::askAfterTimeout(RequestChannel &channel)
{
    if (!channel.isTimeoutGuarded())
        return; // the slot that was told first has attached another device
    if (m_noConnect && &channel == &m_text) {
        channel.endTimeout(false);
        return;
    }
    const QPointer<QObject> same(m_attachment.get());
    QMessageBox::StandardButton answer = QMessageBox::NoButton;
    if (isDevicePresent())
        answer = runModalBox(timeoutQuestion(getDeviceName()), this, getPluginWidget());
    if (!same)
        return;
    const bool lost = !isDevicePresent();
    if (lost && !tellOfLoss())
        return;
    channel.endTimeout(!lost && answer == QMessageBox::Retry);
    if (same && (lost || answer == QMessageBox::Cancel))
        emit pluginRequestClose();
}

void PlexoPlugin::handleVelmarAsciiRequestTimeout()
{
    m_text.handleTimeout();
}

void PlexoPlugin::handleVelmarAES67RequestTimeout()
{
    m_aes67.handleTimeout();
}

void PlexoPlugin::devicePresenceChanged()
{
    const QPointer<PlexoPlugin> alive(this);
    emit deviceAvailabilityChanged();
    if (!alive || !m_device || m_device->isPresent() || m_text.isTimeoutGuarded()
        || m_aes67.isTimeoutGuarded())
        return;
    // Whatever times out from here on must not ask about a device that is gone.
    m_text.guardTimeout();
    m_aes67.guardTimeout();
    if (tellOfLoss())
        emit pluginRequestClose();
}
