#pragma once

#include <QPixmap>
#include <QString>
#include <QStringList>
#include <QtPlugin>

class PlexoPlugin;
class pxDevice;
class pxDevices;
class QWidget;

/// What a host asks of a device plugin: who it is, which models it serves, and plugin objects for them.
///
/// A plugin library's Qt plugin instance implements it. The order of the operations is part of the binary
/// interface; append, never insert.
class PlexoPluginFactory
{
public:
    virtual ~PlexoPluginFactory() = default;

    /// A new plugin object for one device, owned by the caller. Its editor takes the style sheet of
    /// @p styleSource unless that is null.
    virtual PlexoPlugin *createPlugin(QWidget *styleSource) = 0;
    virtual QString getPluginName() = 0;
    virtual QString getVersion() = 0;
    virtual QString getVendorId() = 0;
    virtual QString getVendorName() = 0;
    virtual QString getProductId() = 0;
    /// Model names, compared case-sensitively.
    virtual QStringList getSupportedModels() = 0;
    /// Hands @p plugin its device, then the device list; a null one is skipped. Neither is owned.
    virtual void attachDevice(PlexoPlugin *plugin, pxDevices *devices, pxDevice *device) = 0;
    virtual QStringList getModelKeywords() = 0;
    /// May be null.
    virtual QPixmap getIcon() = 0;
    virtual bool reservedFlagA() { return true; }
    virtual int reservedNumber() = 0;
    /// "major.minor.patch"; also the lowest firmware version whose snapshots the plugin accepts.
    virtual QString getVersionFull() = 0;
    virtual int reservedValueA() { return 0; }
    virtual int reservedValueB() { return 0; }
    virtual int reservedValueC() { return 0; }
    virtual int reservedValueD() { return 0; }
    /// Key for pxDevices::threshold(), or "NA" when no threshold applies.
    virtual QString getThresholdKey() = 0;
    virtual bool reservedFlagB() { return true; }
    virtual QString reservedText() { return QString(); }
};

#define PlexoPluginFactory_iid "com.plexo.PlexoPluginFactory/1.0"
Q_DECLARE_INTERFACE(PlexoPluginFactory, PlexoPluginFactory_iid)
