#pragma once

#include "host/px_device.h"
#include "tests/support/scripted_device.h"

#include <QScopedPointer>
#include <QWidget>

class PlexoPluginFactory;

namespace support {

/// A plugin object attached to a scripted device, as a host would hold it.
class EditorSession
{
public:
    explicit EditorSession(PlexoPluginFactory *factory);
    ~EditorSession();

    /// Attaches the device, shows the editor and waits until it is live. Answers whether that happened.
    bool goLive();

    QWidget *editor() const { return plugin->getPluginWidget(); }

    /// The editor's widget of that object name and class; fails hard when there is none.
    template <typename Widget>
    Widget *find(const char *name) const
    {
        auto *widget = editor()->findChild<Widget *>(QLatin1String(name));
        if (!widget)
            qFatal("no widget named %s", name);
        return widget;
    }

    /// Destroys the plugin object and what it has posted for deletion.
    void close();

    pxDevice device;
    QScopedPointer<PlexoPlugin> plugin;
    QScopedPointer<ScriptedDevice> script;

private:
    PlexoPluginFactory *m_factory;
};

} // namespace support
