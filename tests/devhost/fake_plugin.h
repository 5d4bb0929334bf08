#pragma once

#include "host/plexo_plugin.h"
#include "host/plexo_plugin_factory.h"

/// A plugin with an empty editor. What the host asked of it can be read from its dynamic properties
/// "received", "binary", "applied", "stored" and "recalled".
class FakePlugin : public PlexoPlugin
{
    Q_OBJECT

public:
    FakePlugin();
    ~FakePlugin() override;

    QWidget *getPluginWidget() override { return m_editorWindow; }
    bool checkSnapshot(const QByteArray &snapshot) override { return snapshot.startsWith("good"); }
    void getSnapshot(QByteArray *out) override { *out = "good snapshot of " + getDeviceName().toUtf8(); }
    void applySnapshot(QByteArray snapshot) override;

public slots:
    void recvVelmarAsciiMsg(QString dev_name, QByteArray bytes) override;
    void recvAES67Config(QString dev_name, QByteArray bytes) override;
    void storePreset(int preset) { setProperty("stored", preset); }
    void recallPreset(int preset) { setProperty("recalled", preset); }

private:
    void note(const char *property, const QByteArray &bytes);
};

/// Serves the model "FAKE".
class FakeFactory : public QObject, public PlexoPluginFactory
{
    Q_OBJECT
    Q_INTERFACES(PlexoPluginFactory)

public:
    PlexoPlugin *createPlugin(QWidget *styleSource) override;
    QString getPluginName() override { return QStringLiteral("Fake_Plugin"); }
    QString getVersion() override { return QStringLiteral("1.0"); }
    QString getVendorId() override { return QStringLiteral("Fake"); }
    QString getVendorName() override { return QStringLiteral("Fake Systems"); }
    QString getProductId() override { return QStringLiteral("0"); }
    QStringList getSupportedModels() override { return {QStringLiteral("FAKE")}; }
    void attachDevice(PlexoPlugin *plugin, pxDevices *devices, pxDevice *device) override;
    QStringList getModelKeywords() override { return {}; }
    QPixmap getIcon() override { return {}; }
    int reservedNumber() override { return 0; }
    QString getVersionFull() override { return QStringLiteral("1.0.0"); }
    QString getThresholdKey() override { return QStringLiteral("NA"); }
};
