// Snapshots and presets through the plugin object, as a host drives them.

#include "protocol/reply_handlers.h"
#include "tests/editor/live_editor_test.h"
#include "tests/support/box_answerer.h"

#include <QComboBox>

class SnapshotsTest : public LiveEditorTest
{
    Q_OBJECT

private slots:
    void restoresEverySection();
    void takesSectionsOneByOne_data();
    void takesSectionsOneByOne();
    void presetsReloadTheDevice_data();
    void presetsReloadTheDevice();

private:
    QWidget *frame() const { return session->find<QWidget>("plugin_frame"); }
};

void SnapshotsTest::restoresEverySection()
{
    session->deviceReports(QStringLiteral("/system/bluetooth"), R"({"name":"<Büro> & \"会议\""})");
    QByteArray snapshot;
    session->plugin->getSnapshot(&snapshot);
    QVERIFY(session->plugin->checkSnapshot(snapshot));
    QByteArrayList expected;
    for (const SectionInfo &info : sections()) {
        for (const SectionGet &get : info.inSnapshot() ? getsOf(info.section) : QVector<SectionGet>()) {
            const QJsonObject message{{QStringLiteral("set"), get.path},
                                      {QStringLiteral("value"), session->script->value(get.path)}};
            expected.append(QJsonDocument(message).toJson(QJsonDocument::Compact));
        }
    }
    QCOMPARE(expected.size(), 21);
    session->script->deliverGet(QStringLiteral("/system/usb"), QJsonObject());
    QCOMPARE(session->find<QComboBox>("usb_audio_mode_comboBox")->currentIndex(), 1);
    QSignalSpy finished(session->plugin.data(), &PlexoPlugin::presetLoadFinished);
    QSignalSpy persistent(session->plugin.data(), &PlexoPlugin::updatePluginStatus);
    QCOMPARE(sentBy([&] {
                 session->plugin->applySnapshot(snapshot);
                 QVERIFY(!frame()->isEnabled());
             }),
             expected.join('\n'));
    QCOMPARE(persistent.count(), 21);
    QCOMPARE(finished, QList<QVariantList>({{true}}));
    QCOMPARE(session->find<QComboBox>("usb_audio_mode_comboBox")->currentIndex(), 0);
    QVERIFY(frame()->isEnabled());
    QByteArray again;
    session->plugin->getSnapshot(&again);
    QCOMPARE(again, snapshot);
}

void SnapshotsTest::takesSectionsOneByOne_data()
{
    QTest::addColumn<QByteArray>("document");
    QTest::addColumn<QByteArray>("sent"); // the end of the last message
    QTest::addColumn<QByteArray>("logged"); // part of a line of the host's log
    QTest::addColumn<bool>("accepted");
    QTest::addColumn<bool>("enabled"); // whether the editor is, once all is answered
    const auto row = [](const char *name, const char *sections, const char *sent, const char *logged,
                        bool accepted, bool enabled, const char *version = "1.0") {
        QTest::newRow(name) << QByteArray("<SNAPSHOT_FILE><SNAPSHOT_INFO><FILE_VER>") + version
                + "</FILE_VER><PRODUCT_NAME>TarnKBX</PRODUCT_NAME><PRODUCT_MCU_VER>v1.0.0</PRODUCT_MCU_VER>"
                  "</SNAPSHOT_INFO>"
                + sections + "</SNAPSHOT_FILE>"
                            << QByteArray(sent) << QByteArray(logged) << accepted << enabled;
    };
    row("old version", "<SNAPSHOT_DATA/>", "", "", false, true, "0.9");
    row("no data", "", "", "", false, true);
    row("one section",
        R"(<SNAPSHOT_DATA><SYSTEM_USB>{"param":"/system/usb","value":{"mode":"2x2"}}</SYSTEM_USB></SNAPSHOT_DATA>)",
        R"("value":{"mode":"2x2"}})", "", true, false);
    row("truncated", R"(<SNAPSHOT_DATA><SYSTEM_USB>{"param":"/system/x","value":1}</SYSTEM_USB><SYSTEM_B)",
        R"({"set":"/system/x","value":1})", "", true, false);
    for (const char *path : {"/control/defaults", "/status/x", "/systematic", "/preset"})
        row(path,
            QByteArray(
                R"(<SNAPSHOT_DATA><SYSTEM_USB>{"param":"PATH","value":1}</SYSTEM_USB></SNAPSHOT_DATA>)")
                .replace("PATH", path)
                .constData(),
            "", path, true, false);
    row("no JSON object", "<SNAPSHOT_DATA><SYSTEM_USB>[1]</SYSTEM_USB></SNAPSHOT_DATA>", "", "SYSTEM_USB",
        true, false);
    row("two mixer rows",
        R"(<SNAPSHOT_DATA><PRESET_MIXER>{"value":[[1,2],[3]]}</PRESET_MIXER></SNAPSHOT_DATA>)",
        R"({"set":"/preset/dsp/mixer/6","value":[]})", "", true, true);
    for (const char *text : {"{}", "rubbish"})
        row(text,
            ("<SNAPSHOT_DATA><PRESET_MIXER>" + QByteArray(text) + "</PRESET_MIXER></SNAPSHOT_DATA>")
                .constData(),
            R"({"set":"/preset/dsp/mixer/6","value":[]})", "", true, true);
}

void SnapshotsTest::takesSectionsOneByOne()
{
    QFETCH(QByteArray, document);
    QFETCH(QByteArray, sent);
    QFETCH(QByteArray, logged);
    QFETCH(bool, accepted);
    frame()->setEnabled(true);
    QSignalSpy finished(session->plugin.data(), &PlexoPlugin::presetLoadFinished);
    QSignalSpy log(session->plugin.data(), &PlexoPlugin::logData);
    support::BoxAnswerer ok(QMessageBox::Ok);
    QByteArrayList lines;
    const QByteArray messages = sentBy([&] {
        session->plugin->applySnapshot(document);
        for (const QVariantList &line : log)
            lines.append(line.first().toByteArray());
    });
    QVERIFY2(messages.endsWith(sent) && messages.isEmpty() == sent.isEmpty(), messages);
    QCOMPARE(session->plugin->getSettingsChanged(), !sent.isEmpty());
    QCOMPARE(lines.size(), logged.isEmpty() ? 0 : 1);
    QVERIFY(lines.join().contains(logged));
    QCOMPARE(finished, QList<QVariantList>({{accepted}}));
    QTEST(frame()->isEnabled(), "enabled");
    QCOMPARE(ok.seen().size(), session->plugin->checkSnapshot(document) ? 0 : 1);
    if (ok.seen().isEmpty())
        return;
    QCOMPARE(ok.seen().first().title, QStringLiteral("Version Warning"));
    QVERIFY(ok.seen().first().text.startsWith(
        QLatin1String("The version of the saved preset configuration file is not supported")));
}

void SnapshotsTest::presetsReloadTheDevice_data()
{
    QTest::addColumn<QByteArray>("slot");
    QTest::addColumn<bool>("accepted");
    QTest::addColumn<QString>("message");
    const QString load = QStringLiteral("{\"set\":\"/control/load_preset\", \"value\":\"2\"}");
    QTest::newRow("store") << QByteArray("storePreset") << true
                           << QStringLiteral("{\"set\":\"/control/save_preset\", \"value\":\"2\"}");
    QTest::newRow("recall") << QByteArray("recallPreset") << true << load;
    QTest::newRow("recall of nothing") << QByteArray("recallPreset") << false << load;
}

void SnapshotsTest::presetsReloadTheDevice()
{
    QFETCH(QByteArray, slot);
    QFETCH(bool, accepted);
    session->find<QTimer>("status_poll_timer")->stop();
    frame()->setEnabled(true);
    if (!accepted)
        session->script->refuse(QStringLiteral("_preset"));
    QMetaObject::invokeMethod(session->plugin.data(), slot.constData(), Q_ARG(int, 2));
    QTRY_VERIFY(session->script->isIdle() && !session->script->sent().isEmpty());
    QTEST(session->script->commands().first(), "message");
    QVERIFY(!session->plugin->getSettingsChanged());
    QCOMPARE(frame()->isEnabled(), !accepted);
    QTRY_COMPARE(session->script->gets().size(), accepted ? 35 : 0);
    QTRY_VERIFY(frame()->isEnabled());
}

QTEST_MAIN(SnapshotsTest)
#include "tst_snapshots.moc"
