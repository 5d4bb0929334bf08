// The library as a host sees it: loaded with QPluginLoader, known only through the host's interfaces.

#include "host/plexo_plugin.h"
#include "host/plexo_plugin_factory.h"
#include "host/px_devices.h"
#include "tests/plugin/meta_object_lists.h"
#include "tests/support/editor_session.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QMetaMethod>
#include <QPluginLoader>
#include <QSignalSpy>
#include <QtTest>

class PluginLibraryTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void metaData();
    void instanceIsMadeAnew();
    void casts();
    void identity();
    void styleSource();
    void attachingTellsDeviceBeforeList();
    void wholeQuery();
    void methodsKeepTheirOrder();

private:
    PlexoPluginFactory *factory() { return qobject_cast<PlexoPluginFactory *>(m_loader.instance()); }

    QPluginLoader m_loader;
};

void PluginLibraryTest::initTestCase()
{
    m_loader.setFileName(QStringLiteral(PLUGIN_FILE));
    QVERIFY2(m_loader.load(), qPrintable(m_loader.errorString()));
    QVERIFY(factory());
}

void PluginLibraryTest::metaData()
{
    const QJsonObject data = m_loader.metaData();
    QCOMPARE(data.value(QLatin1String("IID")).toString(), QStringLiteral(PlexoPluginFactory_iid));
    QCOMPARE(data.value(QLatin1String("className")).toString(), QStringLiteral("VelmarSamplePluginFactory"));
    QCOMPARE(data.value(QLatin1String("debug")), QJsonValue(false));
    QVERIFY(data.value(QLatin1String("MetaData")).toObject().isEmpty());
}

void PluginLibraryTest::instanceIsMadeAnew()
{
    QPointer<QObject> first = m_loader.instance();
    QCOMPARE(m_loader.instance(), first.data());
    delete first;
    QPluginLoader again(QStringLiteral(PLUGIN_FILE));
    QVERIFY(again.instance());
    QVERIFY(qobject_cast<PlexoPluginFactory *>(again.instance()));
}

void PluginLibraryTest::casts()
{
    QObject *instance = m_loader.instance();
    auto *widget = qobject_cast<QWidget *>(instance);
    QVERIFY(widget && !widget->parentWidget());
    QCOMPARE(instance->qt_metacast("VelmarSamplePluginFactory"), static_cast<void *>(widget));
    QCOMPARE(instance->qt_metacast("PlexoPluginFactory"), static_cast<void *>(factory()));
    QCOMPARE(instance->qt_metacast(PlexoPluginFactory_iid), static_cast<void *>(factory()));
    QCOMPARE(instance->qt_metacast("QWidget"), static_cast<void *>(widget));
    QVERIFY(!instance->qt_metacast("QLabel"));
    QCOMPARE(instance->metaObject()->methodCount(), QWidget::staticMetaObject.methodCount());
}

void PluginLibraryTest::identity()
{
    PlexoPluginFactory *f = factory();
    QCOMPARE(f->getPluginName(), QStringLiteral("TarnKBX_Plugin"));
    QCOMPARE(f->getVersion(), QStringLiteral("1.0"));
    QCOMPARE(f->getVendorId(), QStringLiteral("VelmarS"));
    QCOMPARE(f->getVendorName(), QStringLiteral("Velmar Systems"));
    QCOMPARE(f->getProductId(), QStringLiteral("5"));
    QCOMPARE(f->getSupportedModels(), QStringList{QStringLiteral("KBX")});
    QCOMPARE(f->getModelKeywords(), QStringList{QStringLiteral("KBX")});
    QVERIFY(f->getIcon().isNull());
    QCOMPARE(f->getVersionFull(), QStringLiteral("1.0.0"));
    QCOMPARE(f->getThresholdKey(), QStringLiteral("NA"));
    QCOMPARE(f->reservedNumber(), 1);
    QVERIFY(f->reservedFlagA() && f->reservedFlagB());
    QCOMPARE(f->reservedValueA() + f->reservedValueB() + f->reservedValueC() + f->reservedValueD(), 0);
    QVERIFY(f->reservedText().isEmpty());
}

void PluginLibraryTest::styleSource()
{
    QWidget source;
    source.setStyleSheet(QStringLiteral("QLabel { color: red; }"));
    const QScopedPointer<PlexoPlugin> dressed(factory()->createPlugin(&source));
    QCOMPARE(dressed->getPluginWidget()->styleSheet(), source.styleSheet());
    QCOMPARE(dressed->getFactory(), factory());
    const QScopedPointer<PlexoPlugin> plain(factory()->createPlugin(nullptr));
    QVERIFY(plain->getPluginWidget()->styleSheet().isEmpty());
    QVERIFY(!plain->deviceMeetsThreshold());
}

void PluginLibraryTest::attachingTellsDeviceBeforeList()
{
    const QScopedPointer<PlexoPlugin> plugin(factory()->createPlugin(nullptr));
    QStringList told;
    connect(plugin.data(), &PlexoPlugin::deviceChanged, this,
            [&told] { told.append(QStringLiteral("device")); });
    connect(plugin.data(), &PlexoPlugin::devicesChanged, this,
            [&told] { told.append(QStringLiteral("list")); });
    pxDevices devices;
    pxDevice device;
    factory()->attachDevice(plugin.data(), nullptr, nullptr);
    QCOMPARE(told, QStringList());
    factory()->attachDevice(plugin.data(), &devices, nullptr);
    QCOMPARE(told, QStringList{QStringLiteral("list")});
    factory()->attachDevice(plugin.data(), &devices, &device);
    QCOMPARE(told, QStringList({QStringLiteral("list"), QStringLiteral("device"), QStringLiteral("list")}));
    PlexoPlugin *brief = factory()->createPlugin(nullptr);
    connect(brief, &PlexoPlugin::deviceChanged, &device, [brief] { delete brief; });
    factory()->attachDevice(brief, &devices, &device);
}

void PluginLibraryTest::wholeQuery()
{
    support::EditorSession session(factory());
    session.script->setSilent(true);
    factory()->attachDevice(session.plugin.data(), nullptr, &session.device);
    session.editor()->show();
    QScopedPointer<QSignalSpy> finished;
    for (int answered = 0; answered < 35; ++answered) {
        QTRY_COMPARE(session.script->sent().size(), answered + 1);
        if (!finished) {
            for (QObject *child : session.editor()->children()) {
                if (child->inherits("DerivedStateMachine"))
                    finished.reset(new QSignalSpy(child, SIGNAL(sm_finished())));
            }
        }
        QVERIFY(finished);
        QCOMPARE(finished->count(), answered < 19 ? 0 : 1);
        const QByteArray request = session.script->sent().last().toUtf8();
        const QString path = QJsonDocument::fromJson(request).object().value(QLatin1String("get")).toString();
        session.script->deliverGet(path, session.script->value(path));
        if (answered == 18)
            QTRY_COMPARE(finished->count(), 1);
    }
    auto *frame = session.find<QWidget>("plugin_frame");
    QTRY_VERIFY(frame->isEnabled());
    QTRY_COMPARE(session.script->commands(),
                 QStringList{QStringLiteral("{\"set\":\"/control/req_metering\", \"value\":100}")});
    QCOMPARE(finished->count(), 1);
}

static QByteArrayList ownMethods(const QMetaObject *meta, QMetaMethod::MethodType type)
{
    QByteArrayList methods;
    for (int i = meta->methodOffset(); i < meta->methodCount(); ++i) {
        if (meta->method(i).methodType() == type)
            methods.append(meta->method(i).methodSignature());
    }
    return methods;
}

void PluginLibraryTest::methodsKeepTheirOrder()
{
    const QScopedPointer<PlexoPlugin> plugin(factory()->createPlugin(nullptr));
    QCOMPARE(plugin->metaObject()->className(), "VelmarSamplePlugin");
    QCOMPARE(ownMethods(plugin->metaObject(), QMetaMethod::Slot), PluginSlots);
    const QMetaObject *window = plugin->getPluginWidget()->metaObject();
    QCOMPARE(window->className(), "TarnKBX_MainWindow");
    QCOMPARE(ownMethods(window, QMetaMethod::Signal), WindowSignals);
    QCOMPARE(ownMethods(window, QMetaMethod::Slot), WindowSlots);
}

QTEST_MAIN(PluginLibraryTest)
#include "tst_plugin_library.moc"
