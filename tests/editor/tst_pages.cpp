// The pages as they follow the device: Bluetooth with its priority dialog, USB, voice cues, metering address.

#include "dsp/metering_socket.h"
#include "tests/editor/live_editor_test.h"
#include "tests/support/box_answerer.h"
#include "transfer/update_dialog.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSpinBox>
#include <QTableWidget>

class PagesTest : public LiveEditorTest
{
    Q_OBJECT

private slots:
    void linkIsShown_data();
    void linkIsShown();
    void wordsSelectTheChoice_data();
    void wordsSelectTheChoice();
    void namesStayIntact_data();
    void namesStayIntact();
    void priorityFollowsTheList_data();
    void priorityFollowsTheList();
    void priorityIsAppliedRowByRow();
    void priorityIsLeftAloneWhileOpen();
    void invalidCueCannotBeSwitchedOn();
    void cueIsOffered_data();
    void cueIsOffered();
    void loadThatComesToNothingKeepsTheEditorGoing();
    void levelsComeFromTheConfirmedAddress();

private:
    void reportPhones(int size, const QByteArray &first);
    QTableWidget *table() const { return session->find<QTableWidget>("tableWidget"); }
    bool isPolling() const
    {
        const bool status = session->find<QTimer>("status_poll_timer")->isActive();
        return status && session->find<QTimer>("metering_request_timer")->isActive();
    }
    void poll() const
    {
        session->find<QTimer>("status_poll_timer")->start();
        session->find<QTimer>("metering_request_timer")->start();
    }
    MeteringSocket *socket() const { return session->editor()->findChild<MeteringSocket *>(); }
};

void PagesTest::linkIsShown_data()
{
    QTest::addColumn<QString>("state");
    QTest::addColumn<int>("rssi");
    QTest::addColumn<QString>("lit");
    QTest::addColumn<int>("shown");
    const auto row = [](const char *state, int rssi, const char *lit, int shown) {
        QTest::addRow("%s %d", state, rssi) << state << rssi << lit << shown;
    };
    row("connected", -67, "good", -67);
    row("connected", -68, "avg", -68);
    row("unheard of", -80, "avg", -80);
    row("connected", -81, "bad", -81);
    row("connected", -128, "", -128);
    row("idle", -50, "", -128);
    row("discoverable", -50, "", -128);
}

void PagesTest::linkIsShown()
{
    QFETCH(QString, state);
    QFETCH(int, rssi);
    QFETCH(QString, lit);
    session->deviceReports(QStringLiteral("/status/bluetooth/state"), '"' + state.toLatin1() + '"');
    session->deviceReports(QStringLiteral("/status/bluetooth/device"),
                           R"({"name":"Phone","song":"<b>S","artist":"A","album":")" + QByteArray(10000, 'x')
                               + R"(","rssi":)" + QByteArray::number(rssi) + '}');
    for (const char *band : {"good", "avg", "bad"}) {
        const auto *led = session->find<QWidget>(QStringLiteral("bt_sig_%1_vmled").arg(QLatin1String(band)));
        QCOMPARE(led->property("state").toBool(), lit == QLatin1String(band));
    }
    QTEST(session->find<QSpinBox>("bt_sig_spinBox")->value(), "shown");
    QCOMPARE(session->find<QLineEdit>("bt_status_lineEdit")->text(), state);
    const bool connected = state != QLatin1String("idle") && state != QLatin1String("discoverable");
    QCOMPARE(session->find<QLineEdit>("bt_connected_dev_lineEdit")->text(),
             connected ? QStringLiteral("Phone") : QString());
    QCOMPARE(session->find<QLabel>("bt_track_label")->text(), QStringLiteral("<b>S"));
    QCOMPARE(session->find<QLabel>("bt_track_label")->textFormat(), Qt::PlainText);
    QCOMPARE(session->find<QLabel>("bt_album_label")->text().size(), 10000);
    QVERIFY(session->editor()->minimumSizeHint().width() <= 1366);
}

void PagesTest::wordsSelectTheChoice_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QByteArray>("settings");
    QTest::addColumn<QString>("shown");
    const auto row = [](const char *path, const char *member, const char *word, const char *shown) {
        QTest::addRow("%s %s", member, word)
            << path << QByteArray("{\"enable\":true,\"") + member + "\":\"" + word + "\"}" << shown;
    };
    const char *bluetooth = "/system/bluetooth";
    row(bluetooth, "connection_mode", "basic", "Manual");
    row(bluetooth, "connection_mode", "reconnect", "Reconnect");
    row(bluetooth, "connection_mode", "Basic", "Exclusive");
    row(bluetooth, "profile", "both", "Call & Media Bridging");
    row(bluetooth, "profile", "media", "Media Bridging (only)");
    row(bluetooth, "profile", "unheard of", "Call Bridging (only)");
    row("/system/usb", "mode", "speakerphone_telephony_ec", "Speakerphone e t 0");
    row("/system/usb", "mode", "2x2", "2x2 Sound Card e t 1");
    row("/system/usb", "mode", "speakerphone_telephony_no_ec", "Speakerphone t 0");
    row("/system/usb", "mode", "speakerphone_ec", "Speakerphone e 0");
    row("/system/usb", "mode", "2X2", "Speakerphone 0");
}

void PagesTest::wordsSelectTheChoice()
{
    QFETCH(QString, path);
    QFETCH(QByteArray, settings);
    QFETCH(QString, shown);
    QSignalSpy mode(session->editor(), SIGNAL(usbMode(int, int)));
    QCOMPARE(sentBy([&] { session->deviceReports(path, settings); }), QByteArray());
    const auto choice = [this](const char *name) { return session->find<QComboBox>(name)->currentText(); };
    const auto tick = [this](const char *name) { return session->find<QCheckBox>(name)->isChecked(); };
    QString usb = choice("usb_audio_mode_comboBox");
    usb += tick("usb_mode_aec_checkBox") ? QStringLiteral(" e") : QString();
    usb += tick("usb_mode_telephony_checkBox") ? QStringLiteral(" t") : QString();
    usb += QStringLiteral(" %1").arg(mode.value(mode.size() - 1).value(1).toInt());
    const QStringList choices{choice("bt_connection_mode_comboBox"), choice("bt_audio_bridging_comboBox"),
                              usb};
    QVERIFY2(choices.contains(shown), qPrintable(choices.join(QLatin1Char('|'))));
}

void PagesTest::namesStayIntact_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("blanks and quotes") << R"( a "b"\c )";
    QTest::newRow("other alphabets") << QStringLiteral("Büro Καφές 会议室 🎧");
    QTest::newRow("10 KB") << QString(10240, QLatin1Char('x'));
}

void PagesTest::namesStayIntact()
{
    QFETCH(QString, name);
    session->deviceReports(QStringLiteral("/system/bluetooth"), R"({"enable":true,"name":"KBX"})");
    auto *field = session->find<QLineEdit>("bt_friendly_name_lineEdit");
    field->selectAll();
    field->insert(name);
    // Nothing but the button sends it, and no reply replaces what is being typed.
    QCOMPARE(sentBy([field] { QTest::keyClick(field, Qt::Key_Return); }), QByteArray());
    for (const char *path : {"/status/bluetooth/device", "/system/bluetooth", "/info"})
        session->script->deliverGet(QLatin1String(path), session->script->value(QLatin1String(path)));
    QCOMPARE(field->text(), name);
    const QJsonObject message{{QStringLiteral("set"), QStringLiteral("/system/bluetooth/name")},
                              {QStringLiteral("value"), name}};
    QCOMPARE(sentByClick(QStringLiteral("bt_apply_friendly_name_pushButton")),
             QJsonDocument(message).toJson(QJsonDocument::Compact));
    QVERIFY(session->cached("SYSTEM_BLUETOOTH")
                .contains(QJsonDocument(message).toJson(QJsonDocument::Compact).mid(40)));
    session->deviceReports(QStringLiteral("/system/bluetooth"), R"({"enable":true,"name":"KBX"})");
    QCOMPARE(field->text(), QStringLiteral("KBX"));
}

void PagesTest::reportPhones(int size, const QByteArray &first)
{
    for (int entry = 0; entry < 8; ++entry)
        session->deviceReports(QStringLiteral("/status/bluetooth/list/%1").arg(entry),
                               entry == 0 ? first : "{}");
    session->deviceReports(QStringLiteral("/status/bluetooth/list_size"), QByteArray::number(size));
}

void PagesTest::priorityFollowsTheList_data()
{
    QTest::addColumn<int>("size");
    QTest::addColumn<int>("rows");
    QTest::newRow("none") << 0 << 0;
    QTest::newRow("one of eight entries") << 1 << 1;
    QTest::newRow("more than entries") << 12 << 12;
    QTest::newRow("negative") << -5 << 0;
    QTest::newRow("beyond reason") << 100000 << 256;
}

void PagesTest::priorityFollowsTheList()
{
    QFETCH(int, size);
    reportPhones(size, R"({"mac":"AA:01","name":"会议 🎧","keep":true})");
    QTEST(table()->rowCount(), "rows");
    for (int row = 0; row < qMin(table()->rowCount(), 12); ++row) {
        QCOMPARE(table()->item(row, 0)->checkState(), row == 0 ? Qt::Checked : Qt::Unchecked);
        QCOMPARE(table()->item(row, 0)->text() + table()->item(row, 1)->text(),
                 row == 0 ? QStringLiteral("AA:01会议 🎧") : QString());
        QCOMPARE(table()->item(row, 0)->data(Qt::AccessibleTextRole).toString(),
                 row == 0 ? QStringLiteral("Protect 会议 🎧, AA:01") : QStringLiteral("Protect , "));
    }
}

void PagesTest::priorityIsAppliedRowByRow()
{
    reportPhones(3, R"({"keep":true})");
    auto *dialog = session->find<QDialog>("BtPriorityPairingDialog");
    QVERIFY(dialog->isHidden());
    QCOMPARE(sentByClick(QStringLiteral("bt_priority_pairing_pushButton")), QByteArray());
    QCOMPARE(dialog->windowTitle(), QStringLiteral("Bluetooth Pairing Priority"));
    for (int row : {0, 1}) {
        // The tick stands at the left end of its cell.
        const QRect cell = table()->visualItemRect(table()->item(row, 0));
        QTest::mouseClick(table()->viewport(), Qt::LeftButton, {}, {cell.left() + 10, cell.center().y()});
    }
    auto *buttons = session->find<QDialogButtonBox>("buttonBox");
    QPushButton *discard = buttons->button(QDialogButtonBox::Discard);
    QPushButton *apply = buttons->button(QDialogButtonBox::Ok);
    QCOMPARE(apply->text() + discard->text(), QStringLiteral("Apply ChangesDiscard Changes"));
    QCOMPARE(sentBy([&] { QTest::mouseClick(discard, Qt::LeftButton); }), QByteArray());
    QVERIFY(dialog->isVisible());
    QCOMPARE(sentBy([&] { QTest::mouseClick(apply, Qt::LeftButton); }),
             QByteArray(R"({"set":"/status/bluetooth/list/0/keep","value":false}
{"set":"/status/bluetooth/list/1/keep","value":true}
{"set":"/status/bluetooth/list/2/keep","value":false})"));
    QVERIFY(dialog->isHidden() && !session->plugin->getSettingsChanged());
}

void PagesTest::priorityIsLeftAloneWhileOpen()
{
    auto *dialog = session->find<QDialog>("BtPriorityPairingDialog");
    const auto leave = [dialog](int way) {
        if (way == 0)
            QTest::keyClick(dialog, Qt::Key_Escape);
        else if (way == 1)
            QTest::keyClick(dialog, Qt::Key_W, Qt::ControlModifier);
        else
            dialog->close();
    };
    for (int way : {0, 1, 2}) {
        reportPhones(1, "{}");
        session->click("bt_priority_pairing_pushButton");
        table()->item(0, 0)->setCheckState(Qt::Checked);
        reportPhones(2, "{}");
        QCOMPARE(table()->rowCount(), 1);
        QCOMPARE(table()->item(0, 0)->checkState(), Qt::Checked);
        QCOMPARE(sentBy([&] { leave(way); }), QByteArray());
        QVERIFY(dialog->isHidden());
    }
}

void PagesTest::invalidCueCannotBeSwitchedOn()
{
    auto *box = session->find<QCheckBox>("vc_pair_success_en_checkBox");
    const QByteArray valid = R"([{"valid":true},{"valid":true},{"valid":true},{"valid":true}])";
    session->deviceReports(QStringLiteral("/status/voice_cue"), R"([{"valid":true},{"valid":true},{},{}])");
    QVERIFY(!box->isChecked() && !box->isEnabled());
    QVERIFY(session->find<QCheckBox>("vc_pair_end_en_checkBox")->isChecked());
    QCOMPARE(sentBy([&] { session->click(box); }), QByteArray());
    session->deviceReports(QStringLiteral("/info"), "{}");
    QVERIFY(box->isChecked() && !box->isEnabled());
    session->deviceReports(QStringLiteral("/status/voice_cue"), valid);
    QVERIFY(box->isChecked() && box->isEnabled());
}

void PagesTest::cueIsOffered_data()
{
    QTest::addColumn<QString>("button");
    QTest::addColumn<QByteArray>("id");
    QTest::addColumn<QByteArray>("file");
    const auto row = [](const char *button, const char *id, const char *file) {
        QTest::newRow(button) << button << QByteArray(id) << QByteArray(file);
    };
    row("vc_pair_init_def_pushButton", "VC_BT_PAIR", "def_pair_init.wav");
    row("vc_pair_end_def_pushButton", "VC_BT_END_PAIR", "def_pair_end.wav");
    row("vc_pair_success_def_pushButton", "VC_BT_SUCCESS", "def_pair_success.wav");
    row("vc_connect_failed_def_pushButton", "VC_BT_FAIL", "def_connect_failed.wav");
    row("vc_connect_failed_load_pushButton", "VC_BT_FAIL", "");
}

void PagesTest::cueIsOffered()
{
    QFETCH(QString, button);
    QFETCH(QByteArray, id);
    QFETCH(QByteArray, file);
    const QTemporaryDir folder;
    if (button.contains(QLatin1String("_load_"))) {
        file = folder.filePath(QStringLiteral("my cue.wav")).toUtf8();
        QFile recording(QString::fromUtf8(file));
        QVERIFY(recording.open(QIODevice::WriteOnly));
        support::onceOpen<QFileDialog>([&](QFileDialog *dialog) {
            QCOMPARE(dialog->windowTitle() + dialog->nameFilters().join(QString()),
                     QStringLiteral("Select WAV FileWAV (*.wav)"));
            dialog->selectFile(QString::fromUtf8(file));
            dialog->findChild<QDialogButtonBox *>()->button(QDialogButtonBox::Open)->click();
        });
    }
    poll();
    QString label;
    QByteArray sent;
    support::onceOpen<UpdateDialog>([&](UpdateDialog *update) {
        label = update->windowTitle()
            + update->findChild<QLabel *>(QStringLiteral("img_filename_label"))->text();
        QTRY_VERIFY(!session->script->commands().isEmpty());
        sent = session->script->commands().first().toUtf8();
        QVERIFY(!isPolling());
        update->findChild<QPushButton *>(QStringLiteral("close_pushButton"))->click();
    });
    session->click(button);
    QCOMPARE(label,
             QLatin1String("tarnKBX Voice Cue Update") + QFileInfo(QString::fromUtf8(file)).fileName());
    QCOMPARE(sent,
             R"({"set":"/control/fwdl","value":{"target":")" + id + R"(","uri":"tftp://127.0.0.2:69/)" + file
                 + R"("}})");
    QVERIFY(!session->find<QWidget>("plugin_frame")->isEnabled());
    QTRY_VERIFY(isPolling());
    QTRY_COMPARE(session->script->gets().size(), 35);
}

void PagesTest::loadThatComesToNothingKeepsTheEditorGoing()
{
    poll();
    support::onceOpen<QFileDialog>([this](QFileDialog *dialog) {
        QVERIFY(!isPolling());
        dialog->reject();
    });
    QCOMPARE(sentByClick(QStringLiteral("vc_pair_init_load_pushButton")), QByteArray());
    QVERIFY(isPolling());
    support::BoxAnswerer ok(QMessageBox::Ok);
    session->plugin->setNetInterfaceIndex(9999);
    QCOMPARE(sentByClick(QStringLiteral("vc_pair_init_def_pushButton")), QByteArray());
    session->plugin->setNetInterfaceIndex(1);
    QCOMPARE(ok.seen().size(), 1);
    QVERIFY(ok.seen().first().text.contains(QLatin1String("no address")));
    QVERIFY(isPolling());
    // A load that dropped what was being read has it read again.
    session->click("refresh_pushButton");
    auto *frame = session->find<QWidget>("plugin_frame");
    frame->setEnabled(true);
    support::onceOpen<QFileDialog>([](QFileDialog *dialog) { dialog->reject(); });
    session->click("vc_pair_init_load_pushButton");
    QVERIFY(!frame->isEnabled());
    QTRY_VERIFY(frame->isEnabled() && isPolling());
    QTRY_COMPARE(
        session->script->gets().mid(session->script->gets().lastIndexOf(QStringLiteral("/info"))).size(), 35);
}

void PagesTest::levelsComeFromTheConfirmedAddress()
{
    const QPointer<MeteringSocket> first = socket();
    QCOMPARE(first->group() + QString::number(first->localPort()), QStringLiteral("239.255.1.15100"));
    session->find<QLineEdit>("multicast_metering_ip_lineEdit")->setText(QStringLiteral("239.255.1.2"));
    session->script->refuse(QStringLiteral("/system/metering"));
    QVERIFY(!sentByClick(QStringLiteral("multicast_metering_apply_pushButton")).isEmpty());
    QCOMPARE(socket(), first.data());
    session->script->acceptAll();
    QVERIFY(!sentByClick(QStringLiteral("multicast_metering_apply_pushButton")).isEmpty());
    QTRY_VERIFY(!first);
    QCOMPARE(socket()->group(), QStringLiteral("239.255.1.2"));
    QCOMPARE(socket()->state(), QAbstractSocket::BoundState);
    QSignalSpy levels(session->editor(), SIGNAL(meteringLevels(QByteArray)));
    QUdpSocket sender;
    for (const char *datagram : {"\x80 no levels", "\x81 levels"})
        sender.writeDatagram(datagram, QHostAddress::LocalHost, socket()->localPort());
    QTRY_COMPARE(levels, QList<QVariantList>({{QByteArray("\x81 levels")}}));
    // Typed and not applied: the device's address comes back, the socket stays.
    const QPointer<MeteringSocket> second = socket();
    session->find<QLineEdit>("multicast_metering_ip_lineEdit")->setText(QStringLiteral("1.2.3.4"));
    session->deviceReports(QStringLiteral("/info"), "{}");
    QCOMPARE(session->find<QLineEdit>("multicast_metering_ip_lineEdit")->text(),
             QStringLiteral("239.255.1.2"));
    QCOMPARE(socket(), second.data());
}

QTEST_MAIN(PagesTest)
#include "tst_pages.moc"
