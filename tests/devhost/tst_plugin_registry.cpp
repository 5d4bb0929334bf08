#include "devhost/plugin_registry.h"
#include "host/plexo_plugin_factory.h"

#include <QTest>

using namespace devhost;

namespace {

QString modulePath(const char *name)
{
    return QStringLiteral("%1/%2").arg(QStringLiteral(MODULE_FOLDER), QLatin1String(name));
}

} // namespace

class Registry : public QObject
{
    Q_OBJECT

private slots:
    void loadsPluginForItsModels();
    void refuses_data();
    void refuses();
};

void Registry::loadsPluginForItsModels()
{
    PluginRegistry registry;
    QVERIFY(!registry.factoryFor(QStringLiteral("FAKE")));
    QCOMPARE(registry.load(modulePath("fake_module")), QString());
    QCOMPARE(registry.plugins().size(), 1);
    PlexoPluginFactory *factory = registry.plugins().first().factory;
    QCOMPARE(factory->getPluginName(), QStringLiteral("Fake_Plugin"));
    QCOMPARE(registry.factoryFor(QStringLiteral("FAKE")), factory);
    QVERIFY(!registry.factoryFor(QStringLiteral("fake")));
}

void Registry::refuses_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<QString>("reason");
    QTest::newRow("nothing there") << modulePath("no_such_plugin")
                                   << QStringLiteral("There is no plugin file");
    QTest::newRow("a folder") << QStringLiteral(MODULE_FOLDER) << QStringLiteral("There is no plugin file");
    QTest::newRow("no library") << QStringLiteral(MODULE_FOLDER "/../CTestTestfile.cmake")
                                << QStringLiteral("is no Qt plugin");
    QTest::newRow("a library that is no plugin")
        << QStringLiteral(HOST_LIBRARY) << QStringLiteral("is no Qt plugin");
    // It ends the test if its code is run.
    QTest::newRow("a plugin for something else")
        << modulePath("foreign_module") << QStringLiteral("org.example.Other/1.0");
}

void Registry::refuses()
{
    QFETCH(const QString, file);
    QFETCH(const QString, reason);
    PluginRegistry registry;
    const QString sentence = registry.load(file);
    QVERIFY2(sentence.contains(reason) && sentence.endsWith(QLatin1Char('.')), qPrintable(sentence));
    QVERIFY(registry.plugins().isEmpty());
}

QTEST_MAIN(Registry)
#include "tst_plugin_registry.moc"
