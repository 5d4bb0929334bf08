#pragma once

#include "host/plexo_plugin.h"

class TarnKBX_MainWindow;

/// The plugin object of one TarnKBX: owns its editor window and routes the host's calls to it.
class VelmarSamplePlugin : public PlexoPlugin
{
    Q_OBJECT

public:
    explicit VelmarSamplePlugin(QWidget *parent = nullptr);
    ~VelmarSamplePlugin() override;

    /// Takes over the editor, which must have this plugin as parent.
    void setEditor(TarnKBX_MainWindow *editor);

    QWidget *getPluginWidget() override;
    bool checkSnapshot(const QByteArray &snapshot) override;
    void getSnapshot(QByteArray *out) override;
    void applySnapshot(QByteArray snapshot) override;
    void loadPreset(int preset) override;
    void savePreset(int preset) override;

public slots:
    void recvVelmarAsciiMsg(QString dev_name, QByteArray bytes) override;
    void recallPreset(int preset);
    void storePreset(int preset);

private:
    TarnKBX_MainWindow *editor() const;
};
