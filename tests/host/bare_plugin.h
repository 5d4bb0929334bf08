#pragma once

#include "host/plexo_plugin.h"

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

    QByteArray told; ///< "signal;signal argument;...", without log lines
    QByteArray logged; ///< "line;line;..."
    int sent = 0; ///< messages on both sides of the channel
};

/// A host's side of one plugin: the device, and its calls as text so that a table can hold them.
class HostSide
{
public:
    HostSide();
    ~HostSide() { delete plugin; }

    /// Makes the calls of @p script, "verb;verb argument;...", as call() names them, as long as the plugin
    /// lives. "await" waits for one more message to be sent, "forget" empties the notes.
    void run(const QByteArray &script);

    pxDevice device;
    QPointer<BarePlugin> plugin;

private:
    void call(const QByteArray &verb, const QByteArray &argument);
};
