#include "tests/devhost/fake_plugin.h"

FakePlugin::FakePlugin()
{
    m_editorWindow = new QWidget(this, Qt::Window);
}

FakePlugin::~FakePlugin()
{
    delete m_editorWindow;
}

void FakePlugin::note(const char *property, const QByteArray &bytes)
{
    setProperty(property, this->property(property).toStringList() << QString::fromUtf8(bytes));
}

void FakePlugin::applySnapshot(QByteArray snapshot)
{
    note("applied", snapshot);
    emit presetLoadFinished(true);
}

void FakePlugin::recvVelmarAsciiMsg(QString dev_name, QByteArray bytes)
{
    note("received", bytes);
    PlexoPlugin::recvVelmarAsciiMsg(dev_name, bytes);
}

void FakePlugin::recvAES67Config(QString, QByteArray bytes)
{
    note("binary", bytes);
}

PlexoPlugin *FakeFactory::createPlugin(QWidget *styleSource)
{
    auto *plugin = new FakePlugin;
    plugin->setFactory(this);
    if (styleSource)
        plugin->getPluginWidget()->setStyleSheet(styleSource->styleSheet());
    return plugin;
}

void FakeFactory::attachDevice(PlexoPlugin *plugin, pxDevices *devices, pxDevice *device)
{
    plugin->setDevice(device);
    plugin->setDevices(devices);
    emit plugin->logData(QStringLiteral("attached"));
}
