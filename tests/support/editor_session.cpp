#include "tests/support/editor_session.h"

#include "host/plexo_plugin_factory.h"

#include <QCoreApplication>
#include <QTest>

namespace support {

EditorSession::EditorSession(PlexoPluginFactory *factory)
    : plugin(factory->createPlugin(nullptr))
    , script(new ScriptedDevice(plugin.data()))
    , m_factory(factory)
{
    device.setName(QStringLiteral("KBX-0001"));
    device.setIpAddress(QHostAddress(QStringLiteral("127.0.0.1")));
    device.setMacAddress(QStringLiteral("02:00:00:00:00:01"));
    device.setProductName(QStringLiteral("TarnKBX"));
    device.setFirmwareVersion(1002003);
    device.setPresent(true);
}

EditorSession::~EditorSession()
{
    close();
}

bool EditorSession::goLive()
{
    m_factory->attachDevice(plugin.data(), nullptr, &device);
    plugin->setNetInterfaceIndex(1);
    editor()->show();
    // The metering request is the first thing that a live editor sends.
    return QTest::qWaitFor([this] { return !script->commands().isEmpty(); });
}

void EditorSession::close()
{
    plugin.reset();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

} // namespace support
