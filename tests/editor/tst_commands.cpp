// Every command of the settings pages: what the user does, what goes onto the wire, whether it counts as a
// change of stored settings, and what the editor holds once the device has confirmed it.

#include "tests/editor/live_editor_test.h"
#include "tests/support/box_answerer.h"

#include <QAbstractSpinBox>
#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>

namespace {

struct Command
{
    const char *widget;
    const char *path;
    const char *value;
    const char *element; // of the section that holds it; none for a command that is no setting
    const char *cached; // part of what the section then holds
};

constexpr char bt[] = "SYSTEM_BLUETOOTH";
constexpr char cue[] = "SYSTEM_VOICE_CUE";
constexpr char metering[] = R"({"ip":"239.255.1.1","port":5100})";
const Command commands[] = {
    {"identify_checkBox", "/control/identify", "true", "", ""},
    {"bt_activate_pairing_pushButton", "/control/bluetooth/pair", "true", "", ""},
    {"bt_close_connection_pushButton", "/control/bluetooth/disconnect", "true", "", ""},
    {"bt_clear_pairing_pushButton", "/control/bluetooth/clear_list", "true", "", ""},
    {"avrcp_play_pushButton", "/control/bluetooth/play", "true", "", ""},
    {"avrcp_pause_pushButton", "/control/bluetooth/pause", "true", "", ""},
    {"avrcp_prev_pushButton", "/control/bluetooth/prev", "true", "", ""},
    {"avrcp_next_pushButton", "/control/bluetooth/next", "true", "", ""},
    {"avrcp_vol_dn_pushButton", "/control/bluetooth/vol_down", "true", "", ""},
    {"avrcp_vol_up_pushButton", "/control/bluetooth/vol_up", "true", "", ""},
    {"vc_pair_init_play_pushButton", "/control/voice_cue/0/play", "true", "", ""},
    {"vc_pair_end_play_pushButton", "/control/voice_cue/1/play", "true", "", ""},
    {"vc_pair_success_play_pushButton", "/control/voice_cue/2/play", "true", "", ""},
    {"vc_connect_failed_play_pushButton", "/control/voice_cue/3/play", "true", "", ""},
    {"bt_disable_pairing_button_checkBox", "/system/bluetooth/button", "false", bt, R"("button":false)"},
    {"bt_connection_mode_comboBox", "/system/bluetooth/connection_mode", R"("reconnect")", bt, "reconnect"},
    {"bt_audio_bridging_comboBox", "/system/bluetooth/profile", R"("media")", bt, "media"},
    {"bt_apply_friendly_name_pushButton", "/system/bluetooth/name", R"("KBX")", bt, "KBX"},
    {"bt_interface_en_checkBox", "/system/bluetooth/enable", "false", bt, R"("enable":false)"},
    {"usb_audio_mode_comboBox", "/system/usb/mode", R"("speakerphone_no_ec")", "SYSTEM_USB", "no_ec"},
    {"usb_priority_checkBox", "/system/usb/priority", "true", "SYSTEM_USB", R"("priority":true)"},
    {"vc_pair_init_en_checkBox", "/system/voice_cue/0/enable", "false", cue,
     R"([{"enable":false},{"enable":t)"},
    {"vc_pair_end_en_checkBox", "/system/voice_cue/1/enable", "false", cue, R"(false},{"enable":false},{)"},
    {"vc_pair_success_en_checkBox", "/system/voice_cue/2/enable", "false", cue, R"(false},{"enable":true}])"},
    {"vc_connect_failed_en_checkBox", "/system/voice_cue/3/enable", "false", cue, R"({"enable":false}])"},
    {"en_multicast_async_notify_checkBox", "/system/notifications/enable", "true", "SYSTEM_NOTIFICATIONS",
     R"("enable":true)"},
    {"multicast_metering_apply_pushButton", "/system/metering", metering, "SYSTEM_METERING", metering},
};

} // namespace

class CommandsTest : public LiveEditorTest
{
    Q_OBJECT

private slots:
    void sendsAndTakesOver_data();
    void sendsAndTakesOver();
    void eachEndOfAListIsSent();
    void usbModeOfWidgets_data();
    void usbModeOfWidgets();
    void refusalLeavesTheCache();
    void addressesAreChecked_data();
    void addressesAreChecked();
    void applySendsWhatItWarnedAbout();
    void staticAddressEnablesItsFields();

private:
    /// By @p key where it chooses or counts, else by a click.
    QByteArray sentByUser(QWidget *control, Qt::Key key)
    {
        const bool byKey = qobject_cast<QComboBox *>(control) || qobject_cast<QAbstractSpinBox *>(control);
        return sentBy([&] { byKey ? QTest::keyClick(control, key) : session->click(control); });
    }
};

void CommandsTest::sendsAndTakesOver_data()
{
    QTest::addColumn<QString>("widget");
    QTest::addColumn<QByteArray>("sent");
    QTest::addColumn<QByteArray>("element");
    QTest::addColumn<QByteArray>("cached");
    for (const Command &c : commands)
        QTest::newRow(c.widget) << c.widget
                                << QByteArray("{\"set\":\"") + c.path + "\",\"value\":" + c.value + '}'
                                << QByteArray(c.element) << QByteArray(c.cached);
}

void CommandsTest::sendsAndTakesOver()
{
    QFETCH(QString, widget);
    QFETCH(QByteArray, element);
    QTEST(sentByUser(session->find<QWidget>(widget), Qt::Key_Down), "sent");
    QCOMPARE(session->plugin->getSettingsChanged(), !element.isEmpty());
    if (element.isEmpty())
        return;
    QFETCH(QByteArray, cached);
    const QByteArray held = session->cached(element.constData());
    QVERIFY2(held.contains(cached), held);
    QCOMPARE(session->find<QWidget>("bt_tabWidget")->isEnabled(),
             widget != QLatin1String("bt_interface_en_checkBox"));
    session->deviceReports(
        QStringLiteral("/system/bluetooth"),
        R"({"enable":true,"button":true,"name":"KBX","connection_mode":"basic","profile":"both"})");
}

void CommandsTest::eachEndOfAListIsSent()
{
    auto *mode = session->find<QComboBox>("bt_connection_mode_comboBox");
    auto *profile = session->find<QComboBox>("bt_audio_bridging_comboBox");
    QVERIFY(sentByUser(mode, Qt::Key_End).endsWith(R"("exclusive"})"));
    QVERIFY(sentByUser(mode, Qt::Key_Home).endsWith(R"("basic"})"));
    QVERIFY(sentByUser(profile, Qt::Key_End).endsWith(R"("hfp"})"));
    QVERIFY(sentByUser(profile, Qt::Key_Home).endsWith(R"("both"})"));
}

void CommandsTest::usbModeOfWidgets_data()
{
    QTest::addColumn<QByteArray>("before");
    QTest::addColumn<QString>("widget");
    QTest::addColumn<QByteArray>("word");
    const auto row = [](const char *before, const char *widget, const char *word) {
        QTest::newRow(word) << QByteArray(before) << widget << QByteArray(word);
    };
    row("speakerphone_no_ec", "usb_mode_aec_checkBox", "speakerphone_ec");
    row("speakerphone_no_ec", "usb_mode_telephony_checkBox", "speakerphone_telephony_no_ec");
    row("speakerphone_ec", "usb_mode_telephony_checkBox", "speakerphone_telephony_ec");
    row("speakerphone_telephony_ec", "usb_audio_mode_comboBox", "2x2");
}

void CommandsTest::usbModeOfWidgets()
{
    QFETCH(QByteArray, before);
    QFETCH(QString, widget);
    QFETCH(QByteArray, word);
    session->deviceReports(QStringLiteral("/system/usb"), "{\"mode\":\"" + before + "\"}");
    QCOMPARE(sentByUser(session->find<QWidget>(widget), Qt::Key_Up),
             "{\"set\":\"/system/usb/mode\",\"value\":\"" + word + "\"}");
    QCOMPARE(session->find<QWidget>("usb_audio_mode_opt_widget")->isHidden(), word == "2x2");
    if (word != "2x2")
        return;
    // The ticks are kept for the way back.
    QVERIFY(sentByUser(session->find<QWidget>(widget), Qt::Key_Down).contains("speakerphone_telephony_ec"));
}

void CommandsTest::refusalLeavesTheCache()
{
    session->script->refuse(QStringLiteral("/system"));
    auto *box = session->find<QCheckBox>("usb_priority_checkBox");
    session->deviceReports(QStringLiteral("/system/usb"), R"({"priority":false})");
    QVERIFY(!sentBy([&] { session->click(box); }).isEmpty());
    QVERIFY(box->isChecked());
    QCOMPARE(session->cached("SYSTEM_USB"), QByteArray(R"({"priority":false})"));
    session->deviceReports(QStringLiteral("/info"), "{}");
    QVERIFY(!box->isChecked());
}

void CommandsTest::addressesAreChecked_data()
{
    QTest::addColumn<QString>("field");
    QTest::addColumn<QString>("warning");
    const auto rows = [](const char *field, const char *warning, std::initializer_list<const char *> texts) {
        for (const char *text : texts)
            QTest::newRow(text) << field << warning;
    };
    const char *address = "multicast_async_notify_ip_lineEdit";
    rows(address, "Invalid IP address", {"192.168.1", "0.1.2.3", "a.1.2.3", "..."});
    rows(address, "", {"10.0.0.300", "10.a.b.c", "10.0.0.1.5"});
    const char *port = "multicast_async_notify_port_lineEdit";
    rows(port, "Invalid port number", {"0", "65536", "-1", "abc"});
    rows(port, "", {"1", "65535"});
}

void CommandsTest::addressesAreChecked()
{
    QFETCH(QString, field);
    QFETCH(QString, warning);
    auto *edit = session->find<QLineEdit>(field);
    support::BoxAnswerer ok(QMessageBox::Ok);
    edit->selectAll();
    QTest::keyClicks(edit, QLatin1String(QTest::currentDataTag()));
    QCOMPARE(sentBy([&] { QTest::keyClick(edit, Qt::Key_Return); }), QByteArray());
    QCOMPARE(edit->text(), QLatin1String(QTest::currentDataTag()));
    QCOMPARE(ok.seen().size(), warning.isEmpty() ? 0 : 1);
    if (warning.isEmpty())
        return;
    const support::SeenBox seen = ok.seen().first();
    QCOMPARE(seen.title + seen.buttons.join(QString()), QStringLiteral("Invalid entryOK"));
    QCOMPARE(seen.text, warning);
    QCOMPARE(session->editor()->focusWidget(), edit);
    QVERIFY(!edit->signalsBlocked());
}

void CommandsTest::applySendsWhatItWarnedAbout()
{
    session->deviceReports(QStringLiteral("/system/notifications"), R"({"enable":true})");
    session->find<QLineEdit>("multicast_async_notify_ip_lineEdit")->setText(QStringLiteral("239.9"));
    session->find<QLineEdit>("multicast_async_notify_port_lineEdit")->setText(QStringLiteral("abc"));
    support::BoxAnswerer ok(QMessageBox::Ok);
    QCOMPARE(sentByClick(QStringLiteral("multicast_async_notify_apply_pushButton")),
             QByteArray(R"({"set":"/system/notifications","value":{"enable":true,"ip":"239.9","port":0}})"));
    QCOMPARE(ok.seen().size(), 2);
    QCOMPARE(ok.seen().last().text, QStringLiteral("Invalid port number"));
    QVERIFY(session->plugin->getSettingsChanged());
}

void CommandsTest::staticAddressEnablesItsFields()
{
    const auto allEnabled = [this](bool enabled) {
        for (const char *name : {"dev_ip_lineEdit", "dev_netmask_lineEdit", "dev_gateway_lineEdit",
                                 "dev_network_apply_pushButton"})
            QVERIFY2(session->find<QWidget>(name)->isEnabled() == enabled, name);
    };
    // The page does not offer these controls, so no click can reach them.
    auto *box = session->find<QCheckBox>("dev_static_ip_checkBox");
    allEnabled(false);
    QCOMPARE(sentBy([&] { box->click(); }), QByteArray());
    allEnabled(true);
    QCOMPARE(sentBy([this] { session->find<QPushButton>("dev_network_apply_pushButton")->click(); }),
             QByteArray(R"({"set":"/system/network","value":{"ip_mode":"static","static_gateway":"10.0.0.1",)"
                        R"("static_ip":"10.0.0.2","static_netmask":"255.0.0.0"}})"));
    QVERIFY(session->cached("SYSTEM_NETWORK").startsWith(R"({"ip_mode":"static")"));
    session->deviceReports(QStringLiteral("/system/network"), R"({"ip_mode":"Static"})");
    allEnabled(false);
}

QTEST_MAIN(CommandsTest)
#include "tst_commands.moc"
