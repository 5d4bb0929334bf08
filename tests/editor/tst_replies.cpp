// What replies of the device change, and what replies that are none leave alone.

#include "tests/editor/live_editor_test.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>

class RepliesTest : public LiveEditorTest
{
    Q_OBJECT

private slots:
    void badRepliesChangeNothing();
    void onlyTheDevicesOwnNameCounts();
    void binaryRepliesEndAtTheZeroByte();
    void widgetsWaitForTheEndOfTheQuery();
    void statusIsNoDataChange();
    void wrongTypesReadAsNothing(); // last: it leaves a device that holds nonsense

private:
    int usbMode() const { return session->find<QComboBox>("usb_audio_mode_comboBox")->currentIndex(); }
    void reportSoundCard() { session->deviceReports(QStringLiteral("/system/usb"), R"({"mode":"2x2"})"); }

    const QByteArray m_reply
        = R"({"cmd":"get","param":"/system/usb","result":"OK","value":{"mode":"speakerphone_ec"}})";
};

void RepliesTest::badRepliesChangeNothing()
{
    const auto edited
        = [this](const char *part, const char *by) { return QByteArray(m_reply).replace(part, by); };
    const QByteArrayList replies = {
        "",
        "no JSON",
        '[' + m_reply + ']',
        m_reply.chopped(1),
        m_reply + '\0',
        QByteArray(1 << 20, '\xff'),
        QByteArray(1 << 20, '{'),
        QByteArray(100000, '[') + QByteArray(100000, ']'),
        edited("\"OK\"", "\"ok\""),
        edited("\"OK\"", "true"),
        edited(",\"result\":\"OK\"", ""),
        edited("\"get\"", "\"GET\""),
        edited("\"get\"", "1"),
        edited("\"cmd\":\"get\",", ""),
        edited("\"/system/usb\"", "{}"),
        edited("\"param\":\"/system/usb\",", ""),
        edited("/usb", "/USB"),
        edited("\"get\"", "\"set\""),
        edited("\"get\"", "\"get_bin\""),
        edited("\"get\"", "\"set_bin\""),
        QByteArray("get_bin\0", 8) + m_reply,
    };
    QByteArray before;
    session->plugin->getSnapshot(&before);
    session->script->setSilent(true);
    for (const QByteArray &reply : replies) {
        session->plugin->queueVelmarAsciiMsg(session->device.name(), "asked", false);
        QTRY_VERIFY(session->plugin->getVelmarAsciiTimer()->isActive());
        session->script->deliver(reply);
        QByteArray after;
        session->plugin->getSnapshot(&after);
        QVERIFY2(!session->plugin->getVelmarAsciiTimer()->isActive(), reply.left(80));
        QVERIFY2(after == before && usbMode() == 0, reply.left(80));
    }
}

void RepliesTest::onlyTheDevicesOwnNameCounts()
{
    for (const char *name : {"kbx-0001", "KBX-0002", "KBX-0001 ", "", "KBX-0001"}) {
        QCOMPARE(usbMode(), 0);
        session->plugin->recvVelmarAsciiMsg(QLatin1String(name), m_reply);
    }
    QCOMPARE(usbMode(), 1);
}

void RepliesTest::binaryRepliesEndAtTheZeroByte()
{
    const QByteArray marked = QByteArray(m_reply).insert(1, "\"note\":\"set_bin\",");
    for (const QByteArray &payload : {QByteArray(), QByteArray("\0{\xff\0}", 5)}) {
        reportSoundCard();
        session->script->deliver(marked + payload);
        QCOMPARE(usbMode(), 1);
    }
}

void RepliesTest::widgetsWaitForTheEndOfTheQuery()
{
    reportSoundCard();
    session->script->setSilent(true);
    session->click("refresh_pushButton");
    session->script->deliver(m_reply);
    QCOMPARE(usbMode(), 0);
    QCOMPARE(session->cached("SYSTEM_USB"), QByteArray(R"({"mode":"speakerphone_ec"})"));
    session->script->setSilent(false);
    QTRY_VERIFY(session->find<QWidget>("plugin_frame")->isEnabled());
}

void RepliesTest::statusIsNoDataChange()
{
    QSignalSpy changed(session->editor(), SIGNAL(dataChanged()));
    auto *led = session->find<QWidget>("usb_connection_vmled");
    session->deviceReports(QStringLiteral("/status/usb"), R"({"state":"connected"})");
    QCOMPARE(led->property("state"), QVariant(true));
    session->deviceReports(QStringLiteral("/status/usb"), R"({"state":"disconnected"})");
    QCOMPARE(led->property("state"), QVariant(false));
    session->script->deliver(R"({"cmd":"set","param":"/no/handler","result":"OK"})");
    QCOMPARE(changed.count(), 0);
    session->script->deliver(R"({"cmd":"get","param":"/no/handler","result":"OK"})");
    session->script->deliver(R"({"cmd":"get_bin","param":"/no/handler","result":"OK"})");
    QCOMPARE(changed.count(), 2);
}

void RepliesTest::wrongTypesReadAsNothing()
{
    session->deviceReports(QStringLiteral("/system/bluetooth"), R"({"enable":"true","button":1,"name":7})");
    session->deviceReports(QStringLiteral("/system/notifications"), R"({"ip":5,"port":"9"})");
    for (const char *path : {"/system/usb", "/system/voice_cue", "/system/network", "/system/metering",
                             "/status/usb", "/status/voice_cue", "/status/bluetooth/device",
                             "/status/bluetooth/list_size", "/status/bluetooth/list/0",
                             "/status/bluetooth/state", "/preset/dsp/dante_rx", "/preset/dsp/mixer/0"})
        session->deviceReports(QLatin1String(path), R"([1,"text",null])");
    for (const char *box : {"bt_interface_en_checkBox", "bt_disable_pairing_button_checkBox",
                            "usb_priority_checkBox", "dev_static_ip_checkBox", "vc_pair_init_en_checkBox"})
        QVERIFY2(!session->find<QCheckBox>(box)->isChecked(), box);
    for (const char *field : {"bt_friendly_name_lineEdit", "bt_status_lineEdit",
                              "multicast_async_notify_ip_lineEdit", "multicast_metering_ip_lineEdit"})
        QCOMPARE(session->find<QLineEdit>(field)->text(), QString());
    QCOMPARE(session->find<QLineEdit>("multicast_async_notify_port_lineEdit")->text(), QStringLiteral("0"));
    QCOMPARE(usbMode(), 1);
    QCOMPARE(sentBy([] {}), QByteArray());
}

QTEST_MAIN(RepliesTest)
#include "tst_replies.moc"
