#pragma once

#include "host/plexo_plugin_factory.h"

#include <QWidget>

/// The library's Qt plugin instance: says who the plugin is and builds plugin objects. Never shown.
class VelmarSamplePluginFactory : public QWidget, public PlexoPluginFactory
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID PlexoPluginFactory_iid)
    Q_INTERFACES(PlexoPluginFactory)

public:
    PlexoPlugin *createPlugin(QWidget *styleSource) override;
    QString getPluginName() override;
    QString getVersion() override;
    QString getVendorId() override;
    QString getVendorName() override;
    QString getProductId() override;
    QStringList getSupportedModels() override;
    void attachDevice(PlexoPlugin *plugin, pxDevices *devices, pxDevice *device) override;
    QStringList getModelKeywords() override;
    QPixmap getIcon() override;
    int reservedNumber() override;
    QString getVersionFull() override;
    QString getThresholdKey() override;
};
