// From construction to a live editor, and reading the device again.

#include "plugin/velmar_sample_plugin_factory.h"
#include "tests/support/editor_session.h"

#include <QCheckBox>
#include <QLabel>
#include <QSignalSpy>
#include <QStatusBar>
#include <QTabWidget>
#include <QTimer>
#include <QtTest>

namespace {

QStringList unconnected;

void collectUnconnected(QtMsgType, const QMessageLogContext &, const QString &text)
{
    if (text.contains(QLatin1String("connectSlotsByName")))
        unconnected.append(text);
}

} // namespace

class OpenTest : public QObject
{
    Q_OBJECT

private slots:
    void everySlotFindsItsWidget();
    void nothingIsSentBeforeADeviceIsThere();
    void oneQueryWhicheverComesFirst_data();
    void oneQueryWhicheverComesFirst();
    void waitsForTheMixer();
    void refreshReadsEverythingAgain();
    void refusedRepliesLeaveTheQueryShort();
    void pollFollowsTheInterface_data();
    void pollFollowsTheInterface();
    void pollsDoNotPileUp();
    void statusIsHighlightedOnRequest();
    void controlsOfOtherModelsAreHidden();

private:
    VelmarSamplePluginFactory m_factory;
};

void OpenTest::everySlotFindsItsWidget()
{
    const QtMessageHandler before = qInstallMessageHandler(collectUnconnected);
    support::EditorSession session(&m_factory);
    const bool live = session.goLive();
    for (const char *block :
         {"onBtInGainClicked", "onNetRxGainClicked", "onUsbInGainClicked", "onMatrixMixerClicked",
          "onBtOutGainClicked", "onNetTxGainClicked", "onUsbOutGainClicked"})
        QMetaObject::invokeMethod(session.editor(), block);
    session.close();
    qInstallMessageHandler(before);
    QVERIFY(live);
    QCOMPARE(unconnected, QStringList());
}

void OpenTest::nothingIsSentBeforeADeviceIsThere()
{
    support::EditorSession session(&m_factory);
    auto *status = session.find<QStatusBar>("statusbar");
    QCOMPARE(status->currentMessage(), QStringLiteral("Device connected..."));
    QCOMPARE(session.find<QLabel>("dev_model")->text(), QStringLiteral("KBX"));
    QCOMPARE(session.editor()->size(), QSize(869, 635));
    session.editor()->show();
    session.editor()->resize(900, 700);
    QSignalSpy idle(session.plugin.data(), &PlexoPlugin::updateGuiData);
    session.plugin->processVelmarAsciiPendRequests();
    QCOMPARE(idle.count(), 1);
    QCOMPARE(session.script->sent(), QStringList());
    QVERIFY(session.goLive());
}

void OpenTest::oneQueryWhicheverComesFirst_data()
{
    QTest::addColumn<bool>("shownFirst");
    QTest::newRow("attached, then shown") << false;
    QTest::newRow("shown, then told of the device") << true;
}

void OpenTest::oneQueryWhicheverComesFirst()
{
    QFETCH(bool, shownFirst);
    support::EditorSession session(&m_factory);
    if (shownFirst) {
        session.plugin->setDeviceNoConnect(&session.device);
        session.editor()->show();
    }
    QVERIFY(session.goLive());
    session.device.setName(QStringLiteral("Stage left"));
    session.device.setIpAddress(QHostAddress(QStringLiteral("10.1.2.3")));
    session.device.setMacAddress(QStringLiteral("02:00:00:00:00:99"));
    session.editor()->resize(950, 700);
    QTRY_COMPARE(session.find<QLabel>("dev_name")->text(), QStringLiteral("Stage left"));
    QCOMPARE(session.find<QLabel>("dev_ip")->text(), QStringLiteral("10.1.2.3"));
    QCOMPARE(session.find<QLabel>("dev_mac")->text(), QStringLiteral("02:00:00:00:00:99"));
    QCOMPARE(session.script->sent().size(), 36);
    QCOMPARE(session.script->gets().size(), 35);
    QCOMPARE(session.script->sent().last(),
             QStringLiteral("{\"set\":\"/control/req_metering\", \"value\":100}"));
    QVERIFY(session.find<QTimer>("status_poll_timer")->isActive());
    QCOMPARE(session.find<QTimer>("status_poll_timer")->interval(), 2000);
    QVERIFY(session.find<QTimer>("metering_request_timer")->isActive());
    QCOMPARE(session.find<QTimer>("metering_request_timer")->interval(), 5000);
    QVERIFY(!session.plugin->getSettingsChanged());
}

void OpenTest::waitsForTheMixer()
{
    support::EditorSession session(&m_factory);
    session.script->refuse(QStringLiteral("/preset/dsp/mixer"));
    m_factory.attachDevice(session.plugin.data(), nullptr, &session.device);
    session.editor()->show();
    auto *retry = session.find<QTimer>("query_retry_timer");
    QTRY_VERIFY(retry->isActive());
    QCOMPARE(retry->interval(), 500);
    QTRY_COMPARE(session.script->sent().size(), 35);
    auto *frame = session.find<QWidget>("plugin_frame");
    QVERIFY(!frame->isEnabled());
    QVERIFY(session.find<QWidget>("DSP")->isHidden());
    QSignalSpy retried(retry, &QTimer::timeout);
    QVERIFY(retried.wait());
    QVERIFY(!frame->isEnabled());
    session.script->deliverGet(QStringLiteral("/preset/dsp/mixer/0"), QJsonValue());
    QTRY_VERIFY(frame->isEnabled());
    QCOMPARE(session.script->gets().size(), 35);
}

void OpenTest::refreshReadsEverythingAgain()
{
    support::EditorSession session(&m_factory);
    QVERIFY(session.goLive());
    session.find<QTabWidget>("tabWidget")->setCurrentIndex(2);
    session.script->setValue(QStringLiteral("/system/usb"), QJsonObject{{QStringLiteral("priority"), true}});
    session.script->forget();
    session.click("refresh_pushButton");
    QVERIFY(!session.find<QWidget>("plugin_frame")->isEnabled());
    QVERIFY(session.find<QWidget>("DSP")->isHidden());
    QVERIFY(!session.find<QTimer>("status_poll_timer")->isActive());
    QTRY_COMPARE(session.script->gets().size(), 35);
    QTRY_VERIFY(session.find<QTimer>("status_poll_timer")->isActive());
    QVERIFY(session.find<QWidget>("plugin_frame")->isEnabled());
    QCOMPARE(session.find<QTabWidget>("tabWidget")->currentIndex(), 0);
    session.find<QTabWidget>("tabWidget")->setCurrentIndex(3);
    QVERIFY(session.find<QWidget>("DSP")->isVisible());
    QTRY_VERIFY(session.find<QCheckBox>("usb_priority_checkBox")->isChecked());
}

void OpenTest::refusedRepliesLeaveTheQueryShort()
{
    support::EditorSession session(&m_factory);
    // 17 of 35: one accepted reply too few.
    for (const char *part : {"/preset", "/status/bluetooth/list/0", "/status/bluetooth/list/1", "list_size"})
        session.script->refuse(QLatin1String(part));
    m_factory.attachDevice(session.plugin.data(), nullptr, &session.device);
    session.editor()->show();
    QTRY_COMPARE(session.script->gets().size(), 35);
    QTRY_VERIFY(session.script->isIdle());
    QVERIFY(!session.find<QTimer>("query_retry_timer")->isActive());
    session.script->deliverGet(QStringLiteral("/info"), QJsonValue());
    QTRY_VERIFY(session.find<QTimer>("query_retry_timer")->isActive());
}

void OpenTest::pollFollowsTheInterface_data()
{
    QTest::addColumn<bool>("bluetooth");
    QTest::addColumn<int>("gets");
    QTest::newRow("Bluetooth on") << true << 13;
    QTest::newRow("Bluetooth off") << false << 2;
}

void OpenTest::pollFollowsTheInterface()
{
    QFETCH(bool, bluetooth);
    support::EditorSession session(&m_factory);
    session.script->setValue(QStringLiteral("/system/bluetooth"),
                             QJsonObject{{QStringLiteral("enable"), bluetooth}});
    QVERIFY(session.goLive());
    QTRY_VERIFY(session.script->isIdle());
    session.script->forget();
    session.find<QTimer>("status_poll_timer")->start(50);
    QTRY_VERIFY(!session.script->gets().isEmpty());
    session.find<QTimer>("status_poll_timer")->stop();
    session.commandsOf([] {});
    QMetaObject::invokeMethod(session.editor(), "onStatusPoll");
    QTRY_VERIFY(session.script->gets().contains(QStringLiteral("/status/usb")));
    QTRY_VERIFY(session.script->isIdle());
    const QStringList gets = session.script->gets();
    QTEST(gets.size(), "gets");
    QCOMPARE(gets.mid(0, 2),
             QStringList({QStringLiteral("/status/voice_cue"), QStringLiteral("/status/usb")}));
    QCOMPARE(gets.last() == QLatin1String("/status/bluetooth/device"), bluetooth);
}

void OpenTest::pollsDoNotPileUp()
{
    support::EditorSession session(&m_factory);
    QVERIFY(session.goLive());
    QTRY_VERIFY(session.script->isIdle());
    session.plugin->setVelmarAsciiTimeout(60000);
    session.script->forget();
    session.script->setSilent(true);
    auto *poll = session.find<QTimer>("status_poll_timer");
    QSignalSpy polled(poll, &QTimer::timeout);
    poll->start(10);
    QTRY_VERIFY(polled.count() >= 5);
    poll->stop();
    session.script->setSilent(false);
    session.script->deliver("{}");
    QTRY_COMPARE(session.script->gets().size(), 13);
    session.commandsOf([] {});
    QCOMPARE(session.script->gets(), QStringList());
}

void OpenTest::statusIsHighlightedOnRequest()
{
    support::EditorSession session(&m_factory);
    auto *bar = session.find<QStatusBar>("statusbar");
    emit session.plugin->updatePluginStatus(QStringLiteral("changed"), true);
    QCOMPARE(bar->currentMessage(), QStringLiteral("changed"));
    QCOMPARE(bar->styleSheet(),
             QStringLiteral("border: 2px solid QLinearGradient(x1: 0, y1: 0, x2: 0, y2: 1, stop: 0 #ff9f07, "
                            "stop: 1 #ff7707);"));
    emit session.plugin->updatePluginStatus(QStringLiteral("stored"), false);
    QCOMPARE(bar->styleSheet(), QStringLiteral("border: none;"));
}

void OpenTest::controlsOfOtherModelsAreHidden()
{
    support::EditorSession session(&m_factory);
    QVERIFY(session.goLive());
    QStringList shown;
    for (const char *name :
         {"dev_addr_widget", "bt_enable_pin_checkBox", "bt_pin_lineEdit", "bt_apply_pin_pushButton",
          "voice_cue_en_label", "voice_cue_en_comboBox", "vc_pair_init_file_lineEdit",
          "vc_pair_end_file_lineEdit", "vc_pair_success_file_lineEdit", "vc_connect_failed_file_lineEdit",
          "meters_enable_pushButton", "danteLock_image", "danteLock_image_label", "lockp_checkBox"}) {
        if (!session.find<QWidget>(name)->isHidden())
            shown.append(QLatin1String(name));
    }
    QCOMPARE(shown, QStringList());
}

QTEST_MAIN(OpenTest)
#include "tst_open.moc"
