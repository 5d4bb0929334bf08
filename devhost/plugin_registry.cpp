#include "devhost/plugin_registry.h"

#include "host/plexo_plugin_factory.h"

#include <QDir>
#include <QFileInfo>
#include <QJsonObject>
#include <QPluginLoader>

namespace devhost {

PluginRegistry::~PluginRegistry()
{
    // A factory may be a widget, which must not outlive the application object.
    for (const LoadedPlugin &plugin : qAsConst(m_plugins))
        delete plugin.instance;
}

QString PluginRegistry::load(const QString &file)
{
    QPluginLoader loader(file);
    if (loader.fileName().isEmpty() || !QFileInfo(loader.fileName()).isFile())
        return tr("There is no plugin file %1. Name an existing one with --plugin.")
            .arg(QDir::toNativeSeparators(file));
    const QString path = QDir::toNativeSeparators(loader.fileName());
    const QString iid = loader.metaData().value(QLatin1String("IID")).toString();
    if (iid.isEmpty())
        return tr("%1 is no Qt plugin of this Qt version. Build it for Qt %2.")
            .arg(path, QLatin1String(qVersion()));
    if (iid != QLatin1String(PlexoPluginFactory_iid))
        return tr("%1 is a plugin for something else (%2, not %3). Name a device plugin.")
            .arg(path, iid, QLatin1String(PlexoPluginFactory_iid));
    auto *factory = qobject_cast<PlexoPluginFactory *>(loader.instance());
    if (!factory)
        return tr("%1 cannot be used: %2. Build it again with this host.").arg(path, loader.errorString());
    m_plugins.append({loader.fileName(), loader.instance(), factory});
    return QString();
}

PlexoPluginFactory *PluginRegistry::factoryFor(const QString &model) const
{
    for (const LoadedPlugin &plugin : m_plugins) {
        if (plugin.factory->getSupportedModels().contains(model))
            return plugin.factory;
    }
    return nullptr;
}

} // namespace devhost
