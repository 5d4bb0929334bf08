// From construction to a live editor, reading the device again, and the ways to end.

#include "editor/tarnkbx_main_window.h"
#include "tests/editor/live_editor_test.h"
#include "tests/support/box_answerer.h"

#include <QCheckBox>
#include <QLabel>
#include <QStatusBar>
#include <QTabWidget>

class LifeCycleTest : public LiveEditorTest
{
    Q_OBJECT

private slots:
    void cleanup() { session.reset(); }
    void slotsFindTheirWidgets();
    void queriesOnce_data();
    void queriesOnce();
    void waitsForTheMixer();
    void refreshReadsAgain();
    void anotherDeviceStartsAnew();
    void pollFollowsTheInterface();
    void endings_data();
    void endings();
};

static QStringList s_unconnected;

static void collectUnconnected(QtMsgType, const QMessageLogContext &, const QString &text)
{
    if (text.contains(QLatin1String("connectSlotsByName")))
        s_unconnected.append(text);
}

void LifeCycleTest::slotsFindTheirWidgets()
{
    session.reset();
    const QtMessageHandler before = qInstallMessageHandler(collectUnconnected);
    session.reset(new support::EditorSession(&factory));
    for (const char *block : {"onBtInGainClicked", "onNetRxGainClicked", "onMatrixMixerClicked"})
        QMetaObject::invokeMethod(session->editor(), block);
    qInstallMessageHandler(before);
    QCOMPARE(s_unconnected, QStringList());
    for (const char *name :
         {"dev_addr_widget", "bt_enable_pin_checkBox", "bt_pin_lineEdit", "bt_apply_pin_pushButton",
          "voice_cue_en_label", "voice_cue_en_comboBox", "vc_pair_init_file_lineEdit",
          "vc_pair_end_file_lineEdit", "vc_pair_success_file_lineEdit", "vc_connect_failed_file_lineEdit",
          "meters_enable_pushButton", "danteLock_image", "danteLock_image_label", "lockp_checkBox"})
        QVERIFY2(session->find<QWidget>(name)->isHidden(), name);
}

void LifeCycleTest::queriesOnce_data()
{
    QTest::addColumn<bool>("shownFirst");
    QTest::newRow("attached, then shown") << false;
    QTest::newRow("shown without a device, then attached") << true;
}

void LifeCycleTest::queriesOnce()
{
    QFETCH(bool, shownFirst);
    session.reset(new support::EditorSession(&factory));
    auto *bar = session->find<QStatusBar>("statusbar");
    QCOMPARE(bar->currentMessage(), QStringLiteral("Device connected..."));
    QCOMPARE(session->editor()->size(), QSize(869, 635));
    if (shownFirst) {
        session->editor()->show();
        QCoreApplication::processEvents();
    }
    QCOMPARE(session->script->sent(), QStringList());
    QVERIFY(session->goLive());
    session->device.setName(QStringLiteral("Stage left"));
    session->editor()->resize(950, 700);
    QTRY_COMPARE(session->find<QLabel>("dev_name")->text(), QStringLiteral("Stage left"));
    QCOMPARE(session->find<QLabel>("dev_ip")->text(), QStringLiteral("127.0.0.1"));
    QCOMPARE(session->find<QLabel>("dev_mac")->text(), QStringLiteral("02:00:00:00:00:01"));
    QCOMPARE(session->find<QLabel>("dev_model")->text(), QStringLiteral("KBX"));
    QCOMPARE(session->script->gets().size(), 35);
    QCOMPARE(session->script->sent().size(), 36);
    QCOMPARE(session->find<QTimer>("status_poll_timer")->interval(), 2000);
    QCOMPARE(session->find<QTimer>("metering_request_timer")->interval(), 5000);
    emit session->plugin->updatePluginStatus(QStringLiteral("stored"), false);
    QCOMPARE(bar->currentMessage(), QStringLiteral("stored"));
}

void LifeCycleTest::waitsForTheMixer()
{
    session.reset(new support::EditorSession(&factory));
    session->script->refuse(QStringLiteral("/preset/dsp/mixer"));
    factory.attachDevice(session->plugin.data(), nullptr, &session->device);
    QSignalSpy retried(session->find<QTimer>("query_retry_timer"), &QTimer::timeout);
    QVERIFY(retried.wait());
    auto *frame = session->find<QWidget>("plugin_frame");
    QVERIFY(!frame->isEnabled());
    session->script->deliverGet(QStringLiteral("/preset/dsp/mixer/0"), QJsonValue());
    QTRY_VERIFY(frame->isEnabled());
}

void LifeCycleTest::refreshReadsAgain()
{
    session->find<QTabWidget>("tabWidget")->setCurrentIndex(2);
    session->find<QTimer>("status_poll_timer")->start();
    session->script->setValue(QStringLiteral("/system/usb"), QJsonObject{{QStringLiteral("priority"), true}});
    session->click("refresh_pushButton");
    auto *frame = session->find<QWidget>("plugin_frame");
    QVERIFY(!frame->isEnabled() && session->find<QWidget>("DSP")->isHidden());
    QVERIFY(!session->find<QTimer>("status_poll_timer")->isActive());
    QTRY_COMPARE(session->script->gets().size(), 35);
    QTRY_VERIFY(frame->isEnabled());
    QCOMPARE(session->find<QTabWidget>("tabWidget")->currentIndex(), 0);
    QVERIFY(!session->find<QWidget>("DSP")->isVisible());
    session->find<QTabWidget>("tabWidget")->setCurrentIndex(3);
    QVERIFY(session->find<QWidget>("DSP")->isVisible());
    QTRY_VERIFY(session->find<QCheckBox>("usb_priority_checkBox")->isChecked());
}

void LifeCycleTest::anotherDeviceStartsAnew()
{
    QMetaObject::invokeMethod(session->editor(), "onMatrixMixerClicked");
    qobject_cast<TarnKBX_MainWindow *>(session->editor())->onUiDspMatrixChanged({{1, 1}, {0, -3}});
    pxDevice other;
    other.setName(QStringLiteral("KBX-0002"));
    other.setPresent(true);
    session->script->refuse(QStringLiteral("/system/usb"));
    QSignalSpy sent(session->plugin.data(), &PlexoPlugin::sendVelmarAsciiMsg);
    session->find<QTimer>("reset_timer")->start();
    session->plugin->setDevice(&other);
    QTRY_COMPARE(session->find<QLabel>("dev_name")->text(), other.name());
    QVERIFY(!session->find<QTimer>("reset_timer")->isActive());
    QVERIFY(!session->find<QWidget>("plugin_frame")->isEnabled());
    QTRY_VERIFY(!session->script->commands().isEmpty());
    QCOMPARE(sent.count(), 36);
    for (const QVariantList &message : sent)
        QCOMPARE(message.first().toString(), other.name());
    QCOMPARE(session->cached("SYSTEM_USB"), QByteArray("null"));
    for (const QWidget *window : QApplication::topLevelWidgets())
        QVERIFY(!window->isVisible() || window == session->editor()->window());
    session->close();
}

void LifeCycleTest::pollFollowsTheInterface()
{
    auto *poll = session->find<QTimer>("status_poll_timer");
    poll->setSingleShot(true);
    for (bool bluetooth : {true, false}) {
        session->deviceReports(QStringLiteral("/system/bluetooth"),
                               bluetooth ? R"({"enable":true})" : R"({"enable":false})");
        session->script->forget();
        poll->start(0);
        QTRY_VERIFY(session->script->gets().contains(QStringLiteral("/status/usb")));
        QTRY_VERIFY(session->script->isIdle() && !session->plugin->getVelmarAsciiTimer()->isActive());
        QCOMPARE(session->script->gets().size(), bluetooth ? 13 : 2);
    }
}

void LifeCycleTest::endings_data()
{
    QTest::addColumn<QString>("button");
    QTest::addColumn<QString>("box"); // title and text; empty when nothing is asked
    QTest::addColumn<QStringList>("sent");
    QTest::addColumn<QString>("timers"); // that run one after the other until the host is asked to close
    const QString identify = QStringLiteral("{\"set\":\"/control/identify\",\"value\":false}");
    QTest::newRow("close") << "close_pushButton" << QString() << QStringList(identify) << "close 500";
    QTest::newRow("factory reset")
        << "factory_reset_pushButton"
        << "Device Factory Reset Warning|Continuing with this operation will initiate a factory\nreset of "
           "the device.\n\nDo you wish to proceed?\n"
        << QStringList(QStringLiteral("{\"set\":\"/control/defaults\",\"value\":1}")) << "reset 1000";
    QTest::newRow("reboot") << "reboot_pushButton"
                            << "Device Reboot Warning|Continuing with this operation will close this plugin "
                               "and reboot\n the device.\n\nDo you wish to proceed?\n"
                            << QStringList({QStringLiteral("{\"set\":\"/control/reboot\", \"value\":true}"),
                                            identify})
                            << "reboot 500 close 500";
}

void LifeCycleTest::endings()
{
    QFETCH(QString, button);
    QFETCH(QString, box);
    QFETCH(QStringList, sent);
    QFETCH(QString, timers);
    QSignalSpy closing(session->plugin.data(), &PlexoPlugin::pluginRequestClose);
    if (!box.isEmpty()) {
        support::BoxAnswerer cancel(QMessageBox::Cancel);
        QCOMPARE(sentByClick(button), QByteArray());
        QCOMPARE(cancel.seen().size(), 1);
        const support::SeenBox seen = cancel.seen().first();
        QCOMPARE(seen.title + QLatin1Char('|') + seen.text, box);
        QCOMPARE(seen.buttons.join(QLatin1Char(' ')) + seen.defaultButton, QStringLiteral("Cancel OKOK"));
    }
    session->find<QCheckBox>("identify_checkBox")->setChecked(true);
    // A factory reset waits for no answer; closing waits for the one to identify.
    const bool reset = timers.startsWith(QLatin1String("reset"));
    session->script->setSilent(reset);
    support::BoxAnswerer ok(QMessageBox::Ok);
    QVector<QTimer *> delays;
    const QStringList steps = timers.split(QLatin1Char(' '));
    for (int step = 0; step < steps.size(); step += 2) {
        delays.append(session->find<QTimer>(steps.at(step) + QLatin1String("_timer")));
        QCOMPARE(delays.last()->interval(), steps.at(step + 1).toInt());
        delays.last()->setInterval(100000); // until the test lets it pass
    }
    session->click(button);
    for (QTimer *delay : delays) {
        QTRY_VERIFY(delay->isActive());
        QCOMPARE(closing.count(), 0);
        delay->start(0);
    }
    QTRY_COMPARE(closing.count(), 1);
    QTRY_COMPARE(session->script->commands(), sent);
    QVERIFY(!session->plugin->getSettingsChanged());
    QCOMPARE(session->find<QWidget>("plugin_frame")->isEnabled(), !reset);
    QCOMPARE(session->find<QCheckBox>("identify_checkBox")->isChecked(), reset);
}

QTEST_MAIN(LifeCycleTest)
#include "tst_life_cycle.moc"
