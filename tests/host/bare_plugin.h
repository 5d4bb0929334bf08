#pragma once

#include "host/plexo_plugin.h"
#include "host/px_devices.h"

/// A plugin object without an editor that notes what it tells its host.
class BarePlugin : public PlexoPlugin
{
    Q_OBJECT

public:
    BarePlugin();

    QWidget *getPluginWidget() override { return nullptr; }
    bool checkSnapshot(const QByteArray &) override { return false; }
    void getSnapshot(QByteArray *) override { }
    void applySnapshot(QByteArray) override { }

    QStringList told; ///< one entry a signal, without log lines
    QStringList logged;
    int sent = 0; ///< messages on both sides of the channel
};

/// A host's side of one plugin: the device objects, and its calls as text so that a table can hold them.
class HostSide
{
public:
    HostSide();
    ~HostSide() { delete plugin; }

    /// Makes the calls of @p script, "verb;verb argument;...", as HostSide::call() names them, as long as the
    /// plugin lives. "await" waits for one more message to be sent, "forget" empties the notes.
    void run(const QString &script);
    QString told() const { return plugin->told.join(QLatin1Char(';')); }

    pxDevice device;
    pxDevices devices;
    QPointer<BarePlugin> plugin;

private:
    void call(const QString &verb, const QByteArray &argument);
};
