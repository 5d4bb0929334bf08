// The Bluetooth page as it follows the device, and the dialog that protects paired phones.

#include "plugin/velmar_sample_plugin_factory.h"
#include "tests/support/editor_session.h"
#include "widgets/vm_led.h"

#include <QComboBox>
#include <QDialog>
#include <QDialogButtonBox>
#include <QJsonArray>
#include <QJsonObject>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSpinBox>
#include <QTableWidget>
#include <QtTest>

class BluetoothTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanupTestCase() { m_session.reset(); }
    void signalBand_data();
    void signalBand();
    void phoneIsNamedWhileConnected_data();
    void phoneIsNamedWhileConnected();
    void wordsSelectTheChoice_data();
    void wordsSelectTheChoice();
    void namesAreSentAndShownIntact_data();
    void namesAreSentAndShownIntact();
    void typedNameSurvivesReplies();
    void priorityRowsFollowTheList_data();
    void priorityRowsFollowTheList();
    void priorityIsAppliedRowByRow();
    void priorityIsLeftAloneWhileOpen();

private:
    void reportPhones(int size, const QJsonArray &phones);
    QDialog *dialog() const { return m_session->find<QDialog>("BtPriorityPairingDialog"); }
    QTableWidget *table() const { return m_session->find<QTableWidget>("tableWidget"); }

    VelmarSamplePluginFactory m_factory;
    QScopedPointer<support::EditorSession> m_session;
};

void BluetoothTest::initTestCase()
{
    m_session.reset(new support::EditorSession(&m_factory));
    QVERIFY(m_session->goLive());
    m_session->commandsOf([] {});
}

void BluetoothTest::signalBand_data()
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
    row("streaming", -80, "avg", -80);
    row("connected", -81, "bad", -81);
    row("connected", -127, "bad", -127);
    row("connected", -128, "", -128);
    row("idle", -50, "", -128);
    row("discoverable", -50, "", -128);
    row("Idle", -50, "good", -50);
}

void BluetoothTest::signalBand()
{
    QFETCH(QString, state);
    QFETCH(int, rssi);
    QFETCH(QString, lit);
    m_session->deviceReports("/status/bluetooth/state", state);
    m_session->deviceReports("/status/bluetooth/device", QJsonObject{{QStringLiteral("rssi"), rssi}});
    for (const char *band : {"good", "avg", "bad"}) {
        const QByteArray name = QByteArray("bt_sig_") + band + "_vmled";
        auto *led = m_session->find<VmLED>(name.constData());
        QCOMPARE(led->state(), lit == QLatin1String(band));
        QCOMPARE(led->diameter(), 2.0);
    }
    QCOMPARE(m_session->find<VmLED>("bt_sig_good_vmled")->color(), QColor(0, 255, 0, 255));
    QCOMPARE(m_session->find<VmLED>("bt_sig_avg_vmled")->color(), QColor(255, 255, 0, 255));
    QTEST(m_session->find<QSpinBox>("bt_sig_spinBox")->value(), "shown");
}

void BluetoothTest::phoneIsNamedWhileConnected_data()
{
    QTest::addColumn<QString>("state");
    QTest::addColumn<QString>("phone");
    QTest::newRow("connected") << "connected"
                               << "Phone";
    QTest::newRow("unheard of") << "sleeping"
                                << "Phone";
    QTest::newRow("idle") << "idle"
                          << "";
    QTest::newRow("discoverable") << "discoverable"
                                  << "";
}

void BluetoothTest::phoneIsNamedWhileConnected()
{
    QFETCH(QString, state);
    m_session->deviceReports("/status/bluetooth/device",
                             QJsonObject{{QStringLiteral("name"), QStringLiteral("Phone")},
                                         {QStringLiteral("song"), QStringLiteral("<b>Song")},
                                         {QStringLiteral("artist"), QStringLiteral("Artist")},
                                         {QStringLiteral("album"), QString(10000, QLatin1Char('A'))}});
    m_session->deviceReports("/status/bluetooth/state", state);
    QCOMPARE(m_session->find<QLineEdit>("bt_status_lineEdit")->text(), state);
    QTEST(m_session->find<QLineEdit>("bt_connected_dev_lineEdit")->text(), "phone");
    QCOMPARE(m_session->find<QLabel>("bt_track_label")->text(), QStringLiteral("<b>Song"));
    QCOMPARE(m_session->find<QLabel>("bt_track_label")->textFormat(), Qt::PlainText);
    QCOMPARE(m_session->find<QLabel>("bt_artist_label")->text(), QStringLiteral("Artist"));
    QCOMPARE(m_session->find<QLabel>("bt_album_label")->text().size(), 10000);
    QVERIFY(m_session->editor()->minimumSizeHint().width() <= 1366);
}

void BluetoothTest::wordsSelectTheChoice_data()
{
    QTest::addColumn<QString>("combo");
    QTest::addColumn<QString>("word");
    QTest::addColumn<QString>("choice");
    const auto row = [](const char *combo, const char *word, const char *choice) {
        QTest::addRow("%s \"%s\"", combo, word) << combo << word << choice;
    };
    for (const char *word : {"exclusive", "Basic", ""})
        row("bt_connection_mode_comboBox", word, "Exclusive");
    row("bt_connection_mode_comboBox", "basic", "Manual");
    row("bt_connection_mode_comboBox", "reconnect", "Reconnect");
    for (const char *word : {"hfp", "both "})
        row("bt_audio_bridging_comboBox", word, "Call Bridging (only)");
    row("bt_audio_bridging_comboBox", "both", "Call & Media Bridging");
    row("bt_audio_bridging_comboBox", "media", "Media Bridging (only)");
}

void BluetoothTest::wordsSelectTheChoice()
{
    QFETCH(QString, combo);
    QFETCH(QString, word);
    const QStringList sent = m_session->commandsOf([&] {
        m_session->deviceReports("/system/bluetooth",
                                 QJsonObject{{QStringLiteral("enable"), true},
                                             {QStringLiteral("connection_mode"), word},
                                             {QStringLiteral("profile"), word}});
    });
    QTEST(m_session->find<QComboBox>(combo.toLatin1().constData())->currentText(), "choice");
    QCOMPARE(sent, QStringList());
}

void BluetoothTest::namesAreSentAndShownIntact_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("blanks") << " my phone ";
    QTest::newRow("empty") << "";
    QTest::newRow("quotes") << R"(a"b\c'd)";
    QTest::newRow("other alphabets") << QStringLiteral("Büro Καφές 会议室");
    QTest::newRow("emoji") << QStringLiteral("🎧🎤");
    QTest::newRow("10 KB") << QString(10240, QLatin1Char('x'));
}

void BluetoothTest::namesAreSentAndShownIntact()
{
    QFETCH(QString, name);
    auto *field = m_session->find<QLineEdit>("bt_friendly_name_lineEdit");
    field->selectAll();
    name.isEmpty() ? QTest::keyClick(field, Qt::Key_Delete) : field->insert(name);
    const QStringList sent = m_session->commandsOf([this] {
        QTest::keyClick(m_session->find<QLineEdit>("bt_friendly_name_lineEdit"), Qt::Key_Return);
        m_session->click("bt_apply_friendly_name_pushButton");
    });
    const QJsonObject message{{QStringLiteral("set"), QStringLiteral("/system/bluetooth/name")},
                              {QStringLiteral("value"), name}};
    QCOMPARE(sent, QStringList(QString::fromUtf8(QJsonDocument(message).toJson(QJsonDocument::Compact))));
    QCOMPARE(m_session->cached("SYSTEM_BLUETOOTH").toObject().value(QLatin1String("name")).toString(), name);
    for (const QString &reported : {QStringLiteral("other"), name})
        m_session->deviceReports(
            "/system/bluetooth",
            QJsonObject{{QStringLiteral("enable"), true}, {QStringLiteral("name"), reported}});
    QCOMPARE(field->text(), name);
}

void BluetoothTest::typedNameSurvivesReplies()
{
    auto *field = m_session->find<QLineEdit>("bt_friendly_name_lineEdit");
    field->selectAll();
    QTest::keyClicks(field, QStringLiteral("half a na"));
    for (const char *path : {"/status/bluetooth/device", "/status/usb", "/system/bluetooth", "/info"})
        m_session->deviceReports(path, m_session->script->value(QLatin1String(path)));
    QCOMPARE(field->text(), QStringLiteral("half a na"));
}

void BluetoothTest::reportPhones(int size, const QJsonArray &phones)
{
    for (int entry = 0; entry < 8; ++entry) {
        const QString path = QStringLiteral("/status/bluetooth/list/%1").arg(entry);
        m_session->deviceReports(path.toLatin1().constData(), phones.at(entry).toObject());
    }
    m_session->deviceReports("/status/bluetooth/list_size", size);
}

void BluetoothTest::priorityRowsFollowTheList_data()
{
    QTest::addColumn<int>("size");
    QTest::addColumn<int>("rows");
    QTest::newRow("none") << 0 << 0;
    QTest::newRow("fewer than entries") << 1 << 1;
    QTest::newRow("more than entries") << 12 << 12;
    QTest::newRow("negative") << -5 << 0;
    QTest::newRow("beyond reason") << 100000 << 256;
}

void BluetoothTest::priorityRowsFollowTheList()
{
    QFETCH(int, size);
    reportPhones(size,
                 {QJsonObject{{QStringLiteral("mac"), QStringLiteral("AA:01")},
                              {QStringLiteral("name"), QStringLiteral("会议 🎧")},
                              {QStringLiteral("keep"), true}}});
    QTEST(table()->rowCount(), "rows");
    QCOMPARE(table()->horizontalHeaderItem(0)->text(), QStringLiteral("[Protect Enable] -  Mac Address"));
    if (size >= 1) {
        QCOMPARE(table()->item(0, 0)->text(), QStringLiteral("AA:01"));
        QCOMPARE(table()->item(0, 0)->checkState(), Qt::Checked);
        QCOMPARE(table()->item(0, 1)->text(), QStringLiteral("会议 🎧"));
    }
    if (size >= 10) {
        QCOMPARE(table()->item(9, 0)->text() + table()->item(9, 1)->text(), QString());
        QCOMPARE(table()->item(9, 0)->checkState(), Qt::Unchecked);
    }
}

void BluetoothTest::priorityIsAppliedRowByRow()
{
    reportPhones(3, {QJsonObject{{QStringLiteral("keep"), true}}, QJsonObject{{QStringLiteral("keep"), 1}}});
    m_session->plugin->setSettingsChanged(false);
    QVERIFY(dialog()->isHidden());
    QCOMPARE(m_session->commandsOf([this] { m_session->click("bt_priority_pairing_pushButton"); }),
             QStringList());
    QVERIFY(dialog()->isVisible());
    QCOMPARE(dialog()->windowTitle(), QStringLiteral("Bluetooth Pairing Priority"));
    for (int row : {0, 1}) {
        // The tick stands at the left end of its cell.
        const QRect cell = table()->visualItemRect(table()->item(row, 0));
        QTest::mouseClick(table()->viewport(), Qt::LeftButton, {}, {cell.left() + 10, cell.center().y()});
    }
    auto *buttons = m_session->find<QDialogButtonBox>("buttonBox");
    QPushButton *discard = buttons->button(QDialogButtonBox::Discard);
    QCOMPARE(discard->text(), QStringLiteral("Discard Changes"));
    QCOMPARE(m_session->commandsOf([&] { QTest::mouseClick(discard, Qt::LeftButton); }), QStringList());
    QVERIFY(dialog()->isVisible());
    QPushButton *apply = buttons->button(QDialogButtonBox::Ok);
    QCOMPARE(apply->text(), QStringLiteral("Apply Changes"));
    QCOMPARE(m_session->commandsOf([&] { QTest::mouseClick(apply, Qt::LeftButton); }),
             QStringList({QStringLiteral("{\"set\":\"/status/bluetooth/list/0/keep\",\"value\":false}"),
                          QStringLiteral("{\"set\":\"/status/bluetooth/list/1/keep\",\"value\":true}"),
                          QStringLiteral("{\"set\":\"/status/bluetooth/list/2/keep\",\"value\":false}")}));
    QVERIFY(dialog()->isHidden());
    QVERIFY(!m_session->plugin->getSettingsChanged());
}

void BluetoothTest::priorityIsLeftAloneWhileOpen()
{
    const QJsonArray phones{QJsonObject{{QStringLiteral("mac"), QStringLiteral("AA:01")}}};
    reportPhones(1, phones);
    for (bool byEscape : {true, false}) {
        m_session->click("bt_priority_pairing_pushButton");
        table()->item(0, 0)->setCheckState(Qt::Checked);
        reportPhones(2, phones);
        QCOMPARE(table()->rowCount(), 1);
        QCOMPARE(table()->item(0, 0)->checkState(), Qt::Checked);
        const QStringList sent = m_session->commandsOf(
            [&] { byEscape ? QTest::keyClick(dialog(), Qt::Key_Escape) : void(dialog()->close()); });
        QCOMPARE(sent, QStringList());
        QVERIFY(dialog()->isHidden());
        reportPhones(1, phones);
        QCOMPARE(table()->item(0, 0)->checkState(), Qt::Unchecked);
    }
}

QTEST_MAIN(BluetoothTest)
#include "tst_bluetooth.moc"
