#pragma once

#include "host/plexo_plugin.h"

/// Remembers for which device a box or dialog was opened. While one is open the host may destroy the editor,
/// or attach another device, which must not get what the answer meant for the first.
class AskedDevice
{
public:
    /// @p plugin is the one that @p asker belongs to; may be null.
    AskedDevice(const QObject *asker, PlexoPlugin *plugin)
        : m_asker(asker)
        , m_plugin(plugin)
        , m_device(deviceOf(plugin))
    {
    }

    /// Whether the asker still exists and is still that of the same device.
    explicit operator bool() const { return m_asker && m_device == deviceOf(m_plugin); }

private:
    static pxDevice *deviceOf(PlexoPlugin *plugin) { return plugin ? plugin->getDevice() : nullptr; }

    QPointer<const QObject> m_asker;
    QPointer<PlexoPlugin> m_plugin;
    QPointer<pxDevice> m_device;
};
