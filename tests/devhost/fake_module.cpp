#include "tests/devhost/fake_plugin.h"

/// The fake plugin as a library that a host loads.
class FakeModule : public FakeFactory
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID PlexoPluginFactory_iid)
};

#include "fake_module.moc"
