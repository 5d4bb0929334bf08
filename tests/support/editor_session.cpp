#include "tests/support/editor_session.h"

#include "host/plexo_plugin_factory.h"
#include "tests/support/loopback.h"

#include <QCoreApplication>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTabWidget>
#include <QTest>
#include <QXmlStreamReader>

namespace support {

EditorSession::EditorSession(PlexoPluginFactory *factory)
    : plugin(factory->createPlugin(nullptr))
    , script(new ScriptedDevice(plugin.data()))
    , m_factory(factory)
{
    QCoreApplication::setAttribute(Qt::AA_DontUseNativeDialogs); // a test can answer Qt's own only
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

void EditorSession::attach()
{
    m_factory->attachDevice(plugin.data(), nullptr, &device);
    plugin->setNetInterfaceIndex(loopbackInterface().index());
    editor()->show();
}

bool EditorSession::goLive()
{
    attach();
    // The metering request is the first thing that a live editor sends.
    return QTest::qWaitFor([this] { return !script->commands().isEmpty(); }, 10000);
}

void EditorSession::click(QWidget *widget) const
{
    for (QWidget *page = widget; QWidget *stack = page->parentWidget(); page = stack) {
        auto *tabs = qobject_cast<QTabWidget *>(stack->parentWidget());
        if (tabs && tabs->indexOf(page) >= 0)
            tabs->setCurrentWidget(page);
    }
    // A check box reacts where its mark and text are, which is not its middle.
    QTest::mouseClick(widget, Qt::LeftButton, {}, {qMin(8, widget->width() / 2), widget->height() / 2});
}

QByteArray EditorSession::commandsOf(const std::function<void()> &action)
{
    const QString end = QStringLiteral("{\"set\":\"end\"}");
    script->forget();
    action();
    plugin->queueVelmarAsciiMsg(device.name(), end.toUtf8(), false);
    const bool all = QTest::qWaitFor([&] { return script->commands().contains(end) && script->isIdle(); });
    QStringList commands = script->commands();
    commands.removeAll(all ? end : QString());
    commands.removeAll(QStringLiteral("{\"set\":\"/control/req_metering\", \"value\":100}"));
    script->forget();
    return commands.join(QLatin1Char('\n')).toUtf8();
}

void EditorSession::deviceReports(const QString &path, const QByteArray &json)
{
    const QJsonValue value = QJsonDocument::fromJson('[' + json + ']').array().at(0);
    script->setValue(path, value);
    script->deliverGet(path, value);
}

QByteArray EditorSession::cached(const char *element) const
{
    QByteArray snapshot;
    plugin->getSnapshot(&snapshot);
    QXmlStreamReader xml(snapshot);
    while (!xml.atEnd() && !(xml.isStartElement() && xml.name() == QLatin1String(element)))
        xml.readNext();
    const QJsonObject section = QJsonDocument::fromJson(xml.readElementText().toUtf8()).object();
    const QJsonArray value{section.value(QLatin1String("value"))};
    return QJsonDocument(value).toJson(QJsonDocument::Compact).chopped(1).mid(1);
}

void EditorSession::close()
{
    plugin.reset();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

} // namespace support
