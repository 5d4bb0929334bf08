// The library as a host sees it: loaded with QPluginLoader, known only through the host's interfaces.

#include "host/plexo_plugin.h"
#include "host/plexo_plugin_factory.h"
#include "host/px_devices.h"
#include "tests/support/editor_session.h"

#include <QJsonObject>
#include <QMetaMethod>
#include <QPluginLoader>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QtTest>

namespace {

// What hosts and forms connect to by name: these must not move or change. Written without blanks inside.

const char PluginSlots[] = "recvVelmarAsciiMsg(QString,QByteArray) recallPreset(int) storePreset(int)";

const char WindowSignals[] = "dataChanged() usbMode(int,int) meteringLevels(QByteArray) "
                             "funcGenChanged(QPair<int,QVariant>) usb_host_status_changed(QString,QString)";

const char WindowSlots[]
    = "handle_device_changed() handle_query_finished() request_level_msgs() onBtInGainClicked() "
      "onBtInGainClosed() onNetRxGainClicked() onNetRxGainClosed() onUsbInGainClicked() "
      "onUsbInGainClosed() onMatrixMixerClicked() onMatrixMixerClosed() onBtOutGainClicked() "
      "onBtOutGainClosed() onNetTxGainClicked() onNetTxGainClosed() onUsbOutGainClicked() "
      "onUsbOutGainClosed() onUiDspBtInStripChange(QPair<int,QPair<int,QVariant>>) "
      "onUiDspNetRxStripChanged(QPair<int,QPair<int,QVariant>>) "
      "onUiDspUsbInStripChanged(QPair<int,QPair<int,QVariant>>) "
      "onUiDspBtOutStripChange(QPair<int,QPair<int,QVariant>>) "
      "onUiDspNetTxStripChanged(QPair<int,QPair<int,QVariant>>) "
      "onUiDspMatrixChanged(QPair<QPair<int,int>,QPair<int,QVariant>>) "
      "onUiDspToneGenChanged(QPair<int,QVariant>) "
      "onUiDspUsbOutStripChanged(QPair<int,QPair<int,QVariant>>) reboot_close() onStatusPoll() "
      "request_close() on_close_pushButton_clicked() on_identify_checkBox_clicked(bool) "
      "on_refresh_pushButton_clicked() updatePluginStatus(QString,bool) "
      "handleSmGetRequest(QString,QByteArray) handle_mixer_changed() onDataChanged() "
      "readPendingMulticastMetering() on_factory_reset_pushButton_clicked() "
      "on_bt_interface_en_checkBox_clicked(bool) "
      "on_bt_disable_pairing_button_checkBox_clicked(bool) "
      "on_bt_friendly_name_lineEdit_editingFinished() "
      "on_bt_apply_friendly_name_pushButton_clicked() "
      "on_bt_connection_mode_comboBox_currentIndexChanged(int) "
      "on_bt_audio_bridging_comboBox_currentIndexChanged(int) "
      "on_bt_activate_pairing_pushButton_clicked() on_bt_close_connection_pushButton_clicked() "
      "on_bt_clear_pairing_pushButton_clicked() on_bt_priority_pairing_pushButton_clicked() "
      "on_bt_sig_spinBox_valueChanged(int) on_avrcp_play_pushButton_clicked() "
      "on_avrcp_pause_pushButton_clicked() on_avrcp_prev_pushButton_clicked() "
      "on_avrcp_next_pushButton_clicked() on_avrcp_vol_dn_pushButton_clicked() "
      "on_avrcp_vol_up_pushButton_clicked() on_usb_audio_mode_comboBox_currentIndexChanged(int) "
      "on_usb_mode_aec_checkBox_clicked(bool) on_usb_mode_telephony_checkBox_clicked(bool) "
      "on_usb_priority_checkBox_clicked(bool) on_vc_pair_init_en_checkBox_clicked(bool) "
      "on_vc_pair_end_en_checkBox_clicked(bool) on_vc_pair_success_en_checkBox_clicked(bool) "
      "on_vc_connect_failed_en_checkBox_clicked(bool) on_vc_pair_init_play_pushButton_clicked() "
      "on_vc_pair_end_play_pushButton_clicked() on_vc_pair_success_play_pushButton_clicked() "
      "on_vc_connect_failed_play_pushButton_clicked() on_vc_pair_init_load_pushButton_clicked() "
      "on_vc_pair_end_load_pushButton_clicked() on_vc_pair_success_load_pushButton_clicked() "
      "on_vc_connect_failed_load_pushButton_clicked() on_vc_pair_init_def_pushButton_clicked() "
      "on_vc_pair_end_def_pushButton_clicked() on_vc_pair_success_def_pushButton_clicked() "
      "on_vc_connect_failed_def_pushButton_clicked() "
      "helper_load_user_vc_file(QString,QString,QByteArray) on_reboot_pushButton_clicked() "
      "on_dev_static_ip_checkBox_clicked(bool) on_dev_ip_lineEdit_editingFinished() "
      "on_dev_netmask_lineEdit_editingFinished() on_dev_gateway_lineEdit_editingFinished() "
      "on_dev_network_apply_pushButton_clicked() "
      "on_en_multicast_async_notify_checkBox_clicked(bool) "
      "on_multicast_async_notify_ip_lineEdit_editingFinished() "
      "on_multicast_async_notify_port_lineEdit_editingFinished() "
      "on_multicast_async_notify_apply_pushButton_clicked() "
      "on_multicast_metering_ip_lineEdit_editingFinished() "
      "on_multicast_metering_port_lineEdit_editingFinished() "
      "on_multicast_metering_apply_pushButton_clicked()";

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

/// The signatures that a class adds itself, in their order.
QByteArrayList ownMethods(const QMetaObject *meta, QMetaMethod::MethodType type)
{
    QByteArrayList methods;
    for (int i = meta->methodOffset(); i < meta->methodCount(); ++i) {
        if (meta->method(i).methodType() == type)
            methods.append(meta->method(i).methodSignature().replace(' ', ""));
    }
    return methods;
}

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
    QCOMPARE(plugin->metaObject()->className(), "VelmarSamplePlugin");
    QCOMPARE(ownMethods(plugin->metaObject(), QMetaMethod::Slot), QByteArray(PluginSlots).split(' '));
    const QMetaObject *window = plugin->getPluginWidget()->metaObject();
    QCOMPARE(window->className(), "TarnKBX_MainWindow");
    QCOMPARE(ownMethods(window, QMetaMethod::Signal), QByteArray(WindowSignals).split(' '));
    QCOMPARE(ownMethods(window, QMetaMethod::Slot), QByteArray(WindowSlots).split(' '));
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
