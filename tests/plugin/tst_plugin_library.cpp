// The library as a host sees it: loaded with QPluginLoader, known only through the host's interfaces.

#include "host/plexo_plugin.h"
#include "host/plexo_plugin_factory.h"
#include "host/px_devices.h"
#include "tests/support/editor_session.h"
#include "tests/support/fingerprint.h"

#include <QJsonObject>
#include <QPluginLoader>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QtTest>

namespace {

/// What the start-up query asks for, in its order.
const char AllGets[] = "/info /status/voice_cue /status/usb /status/bluetooth/state "
                       "/status/bluetooth/list_size /status/bluetooth/list/0 /status/bluetooth/list/1 "
                       "/status/bluetooth/list/2 /status/bluetooth/list/3 /status/bluetooth/list/4 "
                       "/status/bluetooth/list/5 /status/bluetooth/list/6 /status/bluetooth/list/7 "
                       "/status/bluetooth/device /system/usb /system/bluetooth /system/network "
                       "/system/notifications /system/function_gen /system/metering /system/voice_cue "
                       "/preset/dsp/dante_rx /preset/dsp/dante_tx /preset/dsp/usb_playback "
                       "/preset/dsp/usb_record /preset/dsp/bt_sink /preset/dsp/bt_source "
                       "/preset/dsp/voice_cue /preset/dsp/mixer/0 /preset/dsp/mixer/1 /preset/dsp/mixer/2 "
                       "/preset/dsp/mixer/3 /preset/dsp/mixer/4 /preset/dsp/mixer/5 /preset/dsp/mixer/6";

} // namespace

class PluginLibraryTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void metaData();
    void casts();
    void identity();
    void styleSource();
    void attachingTellsDeviceBeforeList();
    void wholeQuery();
    void methodsKeepTheirOrder();
    void loadsAgainFromAnyFolder();

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

void PluginLibraryTest::casts()
{
    QObject *instance = m_loader.instance();
    auto *widget = qobject_cast<QWidget *>(instance);
    QVERIFY(widget && !widget->parentWidget());
    QCOMPARE(instance->qt_metacast("VelmarSamplePluginFactory"), static_cast<void *>(widget));
    QCOMPARE(instance->qt_metacast("PlexoPluginFactory"), static_cast<void *>(factory()));
    QCOMPARE(instance->qt_metacast(PlexoPluginFactory_iid), static_cast<void *>(factory()));
    QCOMPARE(instance->qt_metacast("QWidget"), static_cast<void *>(widget));
}

void PluginLibraryTest::identity()
{
    PlexoPluginFactory *f = factory();
    const QStringList texts{f->getPluginName(),
                            f->getVersion(),
                            f->getVendorId(),
                            f->getVendorName(),
                            f->getProductId(),
                            f->getVersionFull(),
                            f->getThresholdKey(),
                            f->reservedText(),
                            f->getSupportedModels().join(QLatin1Char(' ')),
                            f->getModelKeywords().join(QLatin1Char(' '))};
    QCOMPARE(texts.join(QLatin1Char('|')),
             QStringLiteral("TarnKBX_Plugin|1.0|VelmarS|Velmar Systems|5|1.0.0|NA||KBX|KBX"));
    QVERIFY(f->getIcon().isNull());
    QCOMPARE(f->reservedNumber(), 1);
    QVERIFY(f->reservedFlagA() && f->reservedFlagB());
    QCOMPARE(f->reservedValueA() + f->reservedValueB() + f->reservedValueC() + f->reservedValueD(), 0);
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
        const QString path = session.script->gets().last();
        session.script->deliverGet(path, session.script->value(path));
        if (answered == 18)
            QTRY_COMPARE(finished->count(), 1);
    }
    QCOMPARE(session.script->gets().join(QLatin1Char(' ')), QLatin1String(AllGets));
    QTRY_VERIFY(session.find<QWidget>("plugin_frame")->isEnabled());
    QTRY_COMPARE(session.script->commands(),
                 QStringList{QStringLiteral("{\"set\":\"/control/req_metering\", \"value\":100}")});
    QCOMPARE(finished->count(), 1);
}

void PluginLibraryTest::methodsKeepTheirOrder()
{
    const QScopedPointer<PlexoPlugin> plugin(factory()->createPlugin(nullptr));
    const QMetaObject *window = plugin->getPluginWidget()->metaObject();
    QCOMPARE(plugin->metaObject()->className(), "VelmarSamplePlugin");
    QCOMPARE(window->className(), "TarnKBX_MainWindow");
    QCOMPARE(support::fingerprint(plugin->metaObject()), QByteArray("2f5440ef4cee1f6923960ec23118285f"));
    QCOMPARE(support::fingerprint(window), QByteArray("a9964281a3a0cc96f1e31a8035717761"));
}

void PluginLibraryTest::loadsAgainFromAnyFolder()
{
    QTemporaryDir dir;
    const QDir folder(dir.filePath(QString::fromUtf8("Geräte und Töne 音")));
    QVERIFY(folder.mkpath(QStringLiteral(".")));
    const QString copy = folder.filePath(QFileInfo(QStringLiteral(PLUGIN_FILE)).fileName());
    QVERIFY(QFile::copy(QStringLiteral(PLUGIN_FILE), copy));
    QPluginLoader loader(copy);
    loader.setLoadHints({}); // left to itself it keeps every library until the program ends
    for (int round = 0; round < 2; ++round) {
        auto *anew = qobject_cast<PlexoPluginFactory *>(loader.instance());
        QVERIFY2(anew, qPrintable(loader.errorString()));
        QVERIFY(anew != factory());
        QCOMPARE(anew->getPluginName(), QStringLiteral("TarnKBX_Plugin"));
        QVERIFY2(loader.unload(), qPrintable(loader.errorString()));
    }
    QVERIFY(QFile::remove(copy)); // some systems keep a file that is loaded
}

QTEST_MAIN(PluginLibraryTest)
#include "tst_plugin_library.moc"
