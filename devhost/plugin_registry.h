#pragma once

#include <QList>
#include <QObject>
#include <QPointer>
#include <QString>

class PlexoPluginFactory;

namespace devhost {

/// One plugin library that was loaded.
struct LoadedPlugin
{
    QString file;
    QPointer<QObject> instance; ///< the factory as Qt made it
    PlexoPluginFactory *factory = nullptr; ///< lives as long as the registry
};

/// Loads plugin libraries and answers which one serves a device model. It owns the factories; the libraries
/// stay loaded to the program's end, as Qt keeps references to their types and resources.
class PluginRegistry : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;
    ~PluginRegistry() override;

    /// Loads @p file (with or without the platform's prefix and suffix). The answer is empty, or a sentence
    /// on what is wrong with the file; a refused library's code has not been run.
    QString load(const QString &file);

    const QList<LoadedPlugin> &plugins() const { return m_plugins; }
    /// The first loaded plugin whose model list holds @p model exactly; null when there is none.
    PlexoPluginFactory *factoryFor(const QString &model) const;

private:
    QList<LoadedPlugin> m_plugins;
};

} // namespace devhost
