#include "plugin/velmar_sample_plugin_factory.h"

#include "editor/tarnkbx_main_window.h"
#include "plugin/velmar_sample_plugin.h"

#include <QPointer>

PlexoPlugin *VelmarSamplePluginFactory::createPlugin(QWidget *styleSource)
{
    auto *factory = static_cast<PlexoPluginFactory *>(qt_metacast(PlexoPluginFactory_iid));
    auto *plugin = new VelmarSamplePlugin;
    plugin->setFactory(factory);
    plugin->setEditor(new TarnKBX_MainWindow(plugin));
    if (styleSource)
        plugin->getPluginWidget()->setStyleSheet(styleSource->styleSheet());
    return plugin;
}

QString VelmarSamplePluginFactory::getPluginName()
{
    return QStringLiteral("TarnKBX_Plugin");
}

QString VelmarSamplePluginFactory::getVersion()
{
    return QStringLiteral("1.0");
}

QString VelmarSamplePluginFactory::getVendorId()
{
    return QStringLiteral("VelmarS");
}

QString VelmarSamplePluginFactory::getVendorName()
{
    return QStringLiteral("Velmar Systems");
}

QString VelmarSamplePluginFactory::getProductId()
{
    return QStringLiteral("5");
}

QStringList VelmarSamplePluginFactory::getSupportedModels()
{
    return QStringLiteral("KBX").split(QLatin1Char(';'));
}

void VelmarSamplePluginFactory::attachDevice(PlexoPlugin *plugin, pxDevices *devices, pxDevice *device)
{
    const QPointer<VelmarSamplePlugin> ours(qobject_cast<VelmarSamplePlugin *>(plugin));
    if (ours && device)
        ours->setDevice(device);
    // The host may have destroyed the plugin on hearing of the first.
    if (ours && devices)
        ours->setDevices(devices);
}

QStringList VelmarSamplePluginFactory::getModelKeywords()
{
    return QStringLiteral("KBX").split(QLatin1Char(' '));
}

QPixmap VelmarSamplePluginFactory::getIcon()
{
    return QPixmap(QStringLiteral(":/images/Lumo4_img.png"));
}

int VelmarSamplePluginFactory::reservedNumber()
{
    return 1;
}

QString VelmarSamplePluginFactory::getVersionFull()
{
    return QStringLiteral("1.0.0");
}

QString VelmarSamplePluginFactory::getThresholdKey()
{
    return QStringLiteral("NA");
}
