#pragma once

#include "host/plexo_plugin.h"
#include "host/px_device.h"

#include <QProcess>
#include <QScopedPointer>
#include <QUdpSocket>

class PlexoPluginFactory;

namespace support {

/// A simulated device as a process of its own, and an editor attached to it over UDP as a host would do it.
class LiveDevice
{
public:
    /// @p number 1 to 9 gives the device a name and an address of its own.
    LiveDevice(PlexoPluginFactory *factory, int number, const QStringList &options = {});
    ~LiveDevice();

    /// Attaches the device, shows the editor and waits until it is live.
    bool goLive();

    QWidget *editor() const { return plugin->getPluginWidget(); }

    template <typename Widget>
    Widget *find(const char *name) const
    {
        return editor()->findChild<Widget *>(QLatin1String(name));
    }

    /// What the device itself answers to a get, asked past the editor; "value" of the reply.
    QJsonValue ask(const QString &path);

    pxDevice device;
    QScopedPointer<PlexoPlugin> plugin;
    /// Everything the editor sent.
    QStringList sent;

private:
    void carry();

    PlexoPluginFactory *m_factory;
    QProcess m_process;
    QUdpSocket m_socket;
};

} // namespace support
