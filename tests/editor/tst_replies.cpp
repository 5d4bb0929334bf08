// What replies of the device change, and what replies that are none leave alone.

#include "plugin/velmar_sample_plugin_factory.h"
#include "tests/support/editor_session.h"
#include "widgets/vm_led.h"

#include <QCheckBox>
#include <QComboBox>
#include <QJsonArray>
#include <QJsonObject>
#include <QLineEdit>
#include <QSignalSpy>
#include <QTimer>
#include <QtTest>

namespace {

QByteArray snapshotOf(const support::EditorSession &session)
{
    QByteArray snapshot;
    session.plugin->getSnapshot(&snapshot);
    return snapshot;
}

const QByteArray SpeakerReply
    = R"({"cmd":"get","param":"/system/usb","result":"OK","value":{"mode":"speakerphone_ec"}})";

} // namespace

class RepliesTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup() { m_session.reset(); }
    void badRepliesChangeNothing();
    void otherNamesAreIgnored();
    void binaryRepliesEndAtTheZeroByte_data();
    void binaryRepliesEndAtTheZeroByte();
    void wrongTypesReadAsNothing();
    void widgetsWaitForTheEndOfTheQuery();
    void statusIsNoDataChange();
    void listsGrowAndAreReplaced();
    void lastMixerRowBringsTheFrameBack();

private:
    QComboBox *usbMode() const { return m_session->find<QComboBox>("usb_audio_mode_comboBox"); }

    VelmarSamplePluginFactory m_factory;
    QScopedPointer<support::EditorSession> m_session;
};

void RepliesTest::init()
{
    m_session.reset(new support::EditorSession(&m_factory));
    QVERIFY(m_session->goLive());
    m_session->commandsOf([] {});
}

void RepliesTest::badRepliesChangeNothing()
{
    const QString text = QString::fromLatin1(SpeakerReply);
    const QByteArray nested = QByteArray(100000, '[') + QByteArray(100000, ']');
    const QByteArrayList replies = {
        "",
        "no JSON",
        "[" + SpeakerReply + "]",
        QByteArray(1 << 20, '\xff'),
        QByteArray(1 << 20, '{'),
        nested,
        SpeakerReply + '\0',
        SpeakerReply.left(SpeakerReply.size() - 1),
        QString(text).replace(QLatin1String("\"OK\""), QLatin1String("\"ok\"")).toLatin1(),
        QString(text).replace(QLatin1String("\"OK\""), QLatin1String("true")).toLatin1(),
        QString(text).remove(QLatin1String(",\"result\":\"OK\"")).toLatin1(),
        QString(text).replace(QLatin1String("\"get\""), QLatin1String("\"GET\"")).toLatin1(),
        QString(text).replace(QLatin1String("\"get\""), QLatin1String("1")).toLatin1(),
        QString(text).remove(QLatin1String("\"cmd\":\"get\",")).toLatin1(),
        QString(text).replace(QLatin1String("\"/system/usb\""), QLatin1String("{}")).toLatin1(),
        QString(text).remove(QLatin1String("\"param\":\"/system/usb\",")).toLatin1(),
        QString(text).replace(QLatin1String("/usb"), QLatin1String("/USB")).toLatin1(),
        QString(text).replace(QLatin1String("\"get\""), QLatin1String("\"set\"")).toLatin1(),
        QString(text).replace(QLatin1String("\"get\""), QLatin1String("\"get_bin\"")).toLatin1(),
        QString(text).replace(QLatin1String("\"get\""), QLatin1String("\"set_bin\"")).toLatin1(),
        QByteArray("get_bin\0", 8) + SpeakerReply,
    };
    const QByteArray before = snapshotOf(*m_session);
    m_session->script->setSilent(true);
    for (const QByteArray &reply : replies) {
        m_session->plugin->queueVelmarAsciiMsg(m_session->device.name(), "asked", false);
        QTRY_VERIFY(m_session->plugin->getVelmarAsciiTimer()->isActive());
        m_session->script->deliver(reply);
        QVERIFY2(!m_session->plugin->getVelmarAsciiTimer()->isActive(), reply.left(80));
        QVERIFY2(snapshotOf(*m_session) == before && usbMode()->currentIndex() == 0, reply.left(80));
    }
}

void RepliesTest::otherNamesAreIgnored()
{
    for (const char *name : {"kbx-0001", "KBX-0002", "KBX-0001 ", ""})
        m_session->plugin->recvVelmarAsciiMsg(QLatin1String(name), SpeakerReply);
    QCOMPARE(usbMode()->currentIndex(), 0);
    m_session->plugin->recvVelmarAsciiMsg(QStringLiteral("KBX-0001"), SpeakerReply);
    QCOMPARE(usbMode()->currentIndex(), 1);
}

void RepliesTest::binaryRepliesEndAtTheZeroByte_data()
{
    QTest::addColumn<QByteArray>("payload");
    QTest::newRow("no payload") << QByteArray();
    QTest::newRow("payload of any bytes") << QByteArray("\0{\xff\0}", 5);
}

void RepliesTest::binaryRepliesEndAtTheZeroByte()
{
    QFETCH(QByteArray, payload);
    QByteArray reply = SpeakerReply;
    m_session->script->deliver(reply.insert(1, "\"note\":\"set_bin\",") + payload);
    QCOMPARE(usbMode()->currentIndex(), 1);
}

void RepliesTest::wrongTypesReadAsNothing()
{
    const QJsonArray wrong{1, QStringLiteral("text"), QJsonValue()};
    m_session->deviceReports("/system/bluetooth",
                             QJsonObject{{QStringLiteral("enable"), QStringLiteral("true")},
                                         {QStringLiteral("button"), 1},
                                         {QStringLiteral("name"), 7},
                                         {QStringLiteral("profile"), wrong}});
    m_session->deviceReports(
        "/system/notifications",
        QJsonObject{{QStringLiteral("ip"), 5}, {QStringLiteral("port"), QStringLiteral("9")}});
    for (const char *path : {"/system/usb", "/system/voice_cue", "/system/network", "/system/metering",
                             "/status/usb", "/status/voice_cue", "/status/bluetooth/device",
                             "/status/bluetooth/list_size", "/status/bluetooth/list/0",
                             "/status/bluetooth/state", "/preset/dsp/dante_rx", "/preset/dsp/mixer/0"})
        m_session->deviceReports(path, wrong);
    for (const char *box : {"bt_interface_en_checkBox", "bt_disable_pairing_button_checkBox",
                            "usb_priority_checkBox", "dev_static_ip_checkBox", "vc_pair_init_en_checkBox"})
        QVERIFY2(!m_session->find<QCheckBox>(box)->isChecked(), box);
    QCOMPARE(m_session->find<QComboBox>("bt_audio_bridging_comboBox")->currentIndex(), 2);
    QCOMPARE(m_session->find<QLineEdit>("bt_friendly_name_lineEdit")->text(), QString());
    QCOMPARE(m_session->find<QLineEdit>("bt_status_lineEdit")->text(), QString());
    QCOMPARE(m_session->find<QLineEdit>("multicast_async_notify_ip_lineEdit")->text(), QString());
    QCOMPARE(m_session->find<QLineEdit>("multicast_async_notify_port_lineEdit")->text(), QStringLiteral("0"));
    QCOMPARE(usbMode()->currentIndex(), 1);
    QCOMPARE(m_session->commandsOf([] {}), QStringList());
}

void RepliesTest::widgetsWaitForTheEndOfTheQuery()
{
    m_session->script->setSilent(true);
    m_session->click("refresh_pushButton");
    QSignalSpy changed(m_session->editor(), SIGNAL(dataChanged()));
    m_session->script->deliver(SpeakerReply);
    QCOMPARE(usbMode()->currentIndex(), 0);
    QCOMPARE(changed.count(), 0);
    QCOMPARE(m_session->cached("SYSTEM_USB").toObject().value(QLatin1String("mode")).toString(),
             QStringLiteral("speakerphone_ec"));
}

void RepliesTest::statusIsNoDataChange()
{
    QSignalSpy changed(m_session->editor(), SIGNAL(dataChanged()));
    auto *led = m_session->find<VmLED>("usb_connection_vmled");
    QVERIFY(led->state());
    QCOMPARE(led->color(), QColor(0, 255, 0));
    m_session->deviceReports("/status/usb",
                             QJsonObject{{QStringLiteral("state"), QStringLiteral("disconnected")}});
    QVERIFY(!led->state());
    QCOMPARE(changed.count(), 0);
    m_session->script->deliver(SpeakerReply);
    QCOMPARE(changed.count(), 1);
    m_session->script->deliver(R"({"cmd":"get","param":"/no/handler","result":"OK"})");
    QCOMPARE(changed.count(), 2);
    m_session->script->deliver(R"({"cmd":"get_bin","param":"/no/handler","result":"OK"})");
    QCOMPARE(changed.count(), 3);
    m_session->script->deliver(R"({"cmd":"set","param":"/system/usb","result":"OK"})");
    QCOMPARE(changed.count(), 3);
}

void RepliesTest::listsGrowAndAreReplaced()
{
    const QJsonArray row{-1, -2, -3, -4, -5, -6, -7, -8, -9, -10};
    m_session->deviceReports("/preset/dsp/mixer/3", row);
    const QJsonArray rows = m_session->cached("PRESET_MIXER").toArray();
    QCOMPARE(rows.size(), 7);
    QCOMPARE(rows.at(3).toArray(), row);
    QCOMPARE(rows.at(2).toArray().at(0), QJsonValue(-100));
    QCOMPARE(m_session->cached("PRESET_RX").toArray().size(), 4);
    QCOMPARE(m_session->cached("PRESET_VOICE_CUE").toArray().size(), 1);
}

void RepliesTest::lastMixerRowBringsTheFrameBack()
{
    auto *frame = m_session->find<QWidget>("plugin_frame");
    frame->setEnabled(false);
    m_session->script->deliverSet(QStringLiteral("/preset/dsp/mixer/5"), QJsonArray());
    QVERIFY(!frame->isEnabled());
    m_session->script->deliverSet(QStringLiteral("/preset/dsp/mixer/6"), QJsonArray());
    QVERIFY(frame->isEnabled());
}

QTEST_MAIN(RepliesTest)
#include "tst_replies.moc"
