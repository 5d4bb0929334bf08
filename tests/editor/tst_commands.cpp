// Every command of the settings pages: what the hand does, what goes onto the wire, whether it counts as a
// change of stored settings, and what the editor's caches hold once the device has confirmed it.

#include "plugin/velmar_sample_plugin_factory.h"
#include "tests/support/editor_session.h"

#include <QCheckBox>
#include <QComboBox>
#include <QJsonArray>
#include <QJsonObject>
#include <QLineEdit>
#include <QStatusBar>
#include <QtTest>

Q_DECLARE_METATYPE(QJsonValue)

class CommandsTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanupTestCase() { m_session.reset(); }
    void sendsAndTakesOver_data();
    void sendsAndTakesOver();
    void usbModeOfWidgets_data();
    void usbModeOfWidgets();
    void refusalLeavesTheCache();

private:
    VelmarSamplePluginFactory m_factory;
    QScopedPointer<support::EditorSession> m_session;
};

void CommandsTest::init()
{
    if (!m_session) {
        m_session.reset(new support::EditorSession(&m_factory));
        QVERIFY(m_session->goLive());
    }
    m_session->script->acceptAll();
    for (const char *path : {"/system/usb", "/system/bluetooth", "/system/voice_cue", "/system/notifications",
                             "/system/metering"})
        m_session->deviceReports(path, m_session->script->value(QLatin1String(path)));
    m_session->find<QCheckBox>("identify_checkBox")->setChecked(false);
    m_session->plugin->setSettingsChanged(false);
}

void CommandsTest::sendsAndTakesOver_data()
{
    QTest::addColumn<QString>("widget");
    QTest::addColumn<QString>("path");
    QTest::addColumn<QJsonValue>("value");
    QTest::addColumn<QString>("element"); // of the cached section; empty for a command without a cache
    QTest::addColumn<int>("index");
    const auto command = [](const char *widget, const char *path) {
        QTest::newRow(widget) << widget << path << QJsonValue(true) << QString() << -1;
    };
    const auto setting
        = [](const char *widget, const char *path, const QJsonValue &value, const char *element,
             int index = -1) { QTest::newRow(widget) << widget << path << value << element << index; };
    command("identify_checkBox", "/control/identify");
    command("bt_activate_pairing_pushButton", "/control/bluetooth/pair");
    command("bt_close_connection_pushButton", "/control/bluetooth/disconnect");
    command("bt_clear_pairing_pushButton", "/control/bluetooth/clear_list");
    command("avrcp_play_pushButton", "/control/bluetooth/play");
    command("avrcp_pause_pushButton", "/control/bluetooth/pause");
    command("avrcp_prev_pushButton", "/control/bluetooth/prev");
    command("avrcp_next_pushButton", "/control/bluetooth/next");
    command("avrcp_vol_dn_pushButton", "/control/bluetooth/vol_down");
    command("avrcp_vol_up_pushButton", "/control/bluetooth/vol_up");
    command("vc_pair_init_play_pushButton", "/control/voice_cue/0/play");
    command("vc_pair_end_play_pushButton", "/control/voice_cue/1/play");
    command("vc_pair_success_play_pushButton", "/control/voice_cue/2/play");
    command("vc_connect_failed_play_pushButton", "/control/voice_cue/3/play");
    setting("bt_interface_en_checkBox", "/system/bluetooth/enable", false, "SYSTEM_BLUETOOTH");
    setting("bt_disable_pairing_button_checkBox", "/system/bluetooth/button", false, "SYSTEM_BLUETOOTH");
    setting("bt_connection_mode_comboBox", "/system/bluetooth/connection_mode", QStringLiteral("reconnect"),
            "SYSTEM_BLUETOOTH");
    setting("bt_audio_bridging_comboBox", "/system/bluetooth/profile", QStringLiteral("media"),
            "SYSTEM_BLUETOOTH");
    setting("bt_apply_friendly_name_pushButton", "/system/bluetooth/name", QStringLiteral("KBX"),
            "SYSTEM_BLUETOOTH");
    setting("usb_audio_mode_comboBox", "/system/usb/mode", QStringLiteral("speakerphone_no_ec"),
            "SYSTEM_USB");
    setting("usb_priority_checkBox", "/system/usb/priority", true, "SYSTEM_USB");
    setting("vc_pair_init_en_checkBox", "/system/voice_cue/0/enable", false, "SYSTEM_VOICE_CUE", 0);
    setting("vc_pair_end_en_checkBox", "/system/voice_cue/1/enable", false, "SYSTEM_VOICE_CUE", 1);
    setting("vc_pair_success_en_checkBox", "/system/voice_cue/2/enable", false, "SYSTEM_VOICE_CUE", 2);
    setting("vc_connect_failed_en_checkBox", "/system/voice_cue/3/enable", false, "SYSTEM_VOICE_CUE", 3);
    setting("en_multicast_async_notify_checkBox", "/system/notifications/enable", true,
            "SYSTEM_NOTIFICATIONS");
    setting("multicast_async_notify_apply_pushButton", "/system/notifications",
            QJsonObject{{QStringLiteral("enable"), false},
                        {QStringLiteral("ip"), QStringLiteral("239.1.1.1")},
                        {QStringLiteral("port"), 5000}},
            "SYSTEM_NOTIFICATIONS");
    setting(
        "multicast_metering_apply_pushButton", "/system/metering",
        QJsonObject{{QStringLiteral("ip"), QStringLiteral("239.255.1.1")}, {QStringLiteral("port"), 5100}},
        "SYSTEM_METERING");
}

void CommandsTest::sendsAndTakesOver()
{
    QFETCH(QString, widget);
    QFETCH(QString, path);
    QFETCH(QJsonValue, value);
    QFETCH(QString, element);
    QFETCH(int, index);
    auto *control = m_session->find<QWidget>(widget.toLatin1().constData());
    const QStringList sent = m_session->commandsOf([&] {
        if (qobject_cast<QComboBox *>(control))
            QTest::keyClick(control, Qt::Key_Down);
        else
            m_session->click(control);
    });
    const QString json = QString::fromUtf8(
        QJsonDocument(QJsonArray{value}).toJson(QJsonDocument::Compact).chopped(1).mid(1));
    QCOMPARE(sent, {QStringLiteral("{\"set\":\"%1\",\"value\":%2}").arg(path, json)});
    QCOMPARE(m_session->plugin->getSettingsChanged(), !element.isEmpty());
    QCOMPARE(m_session->find<QStatusBar>("statusbar")->currentMessage(),
             element.isEmpty() ? QStringLiteral("Device connected...")
                               : QStringLiteral("Device connected - Settings have changed"));
    if (element.isEmpty())
        return;
    QJsonValue cached = m_session->cached(element.toLatin1().constData());
    if (index >= 0)
        cached = cached.toArray().at(index);
    if (!value.isObject())
        cached = cached.toObject().value(path.section(QLatin1Char('/'), -1));
    QCOMPARE(cached, value);
}

void CommandsTest::usbModeOfWidgets_data()
{
    QTest::addColumn<QString>("before");
    QTest::addColumn<QString>("widget");
    QTest::addColumn<QString>("word");
    const char *aec = "usb_mode_aec_checkBox";
    const char *telephony = "usb_mode_telephony_checkBox";
    const char *mode = "usb_audio_mode_comboBox";
    QTest::newRow("echo cancellation") << "speakerphone_no_ec" << aec << "speakerphone_ec";
    QTest::newRow("telephony") << "speakerphone_no_ec" << telephony << "speakerphone_telephony_no_ec";
    QTest::newRow("both") << "speakerphone_ec" << telephony << "speakerphone_telephony_ec";
    QTest::newRow("one less") << "speakerphone_telephony_ec" << aec << "speakerphone_telephony_no_ec";
    QTest::newRow("sound card whatever the ticks") << "speakerphone_telephony_ec" << mode << "2x2";
}

void CommandsTest::usbModeOfWidgets()
{
    QFETCH(QString, before);
    QFETCH(QString, widget);
    m_session->deviceReports("/system/usb", QJsonObject{{QStringLiteral("mode"), before}});
    auto *control = m_session->find<QWidget>(widget.toLatin1().constData());
    const QStringList sent = m_session->commandsOf([&] {
        if (qobject_cast<QComboBox *>(control))
            QTest::keyClick(control, Qt::Key_Up);
        else
            m_session->click(control);
    });
    QFETCH(QString, word);
    QCOMPARE(sent, {QStringLiteral("{\"set\":\"/system/usb/mode\",\"value\":\"%1\"}").arg(word)});
    QCOMPARE(m_session->find<QWidget>("usb_audio_mode_opt_widget")->isHidden(), word == QLatin1String("2x2"));
    m_session->deviceReports("/system/usb", m_session->script->value(QStringLiteral("/system/usb")));
}

void CommandsTest::refusalLeavesTheCache()
{
    m_session->script->refuse(QStringLiteral("/system"));
    auto *box = m_session->find<QCheckBox>("bt_interface_en_checkBox");
    QCOMPARE(m_session->commandsOf([&] { m_session->click(box); }).size(), 1);
    QVERIFY(!box->isChecked());
    QVERIFY(m_session->find<QWidget>("bt_tabWidget")->isEnabled());
    const QJsonObject cached = m_session->cached("SYSTEM_BLUETOOTH").toObject();
    QCOMPARE(cached.value(QLatin1String("enable")), QJsonValue(true));
    m_session->deviceReports("/info", QJsonObject());
    QVERIFY(box->isChecked());
}

QTEST_MAIN(CommandsTest)
#include "tst_commands.moc"
