// The block editors from the window's side: opening and closing, wiring, and what each change sends.

#include "dsp/matrix_mixer_form.h"
#include "tests/editor/live_editor_test.h"
#include "widgets/vm_dial.h"
#include "widgets/vm_dsp_gain.h"
#include "widgets/vm_meter.h"

#include <QCheckBox>
#include <QPushButton>
#include <QSpinBox>
#include <QTableWidget>

class DspTest : public LiveEditorTest
{
    Q_OBJECT

private slots:
    void cleanup();
    void opensOnceAndCloses_data() { blocks(); }
    void opensOnceAndCloses();
    void stripChangesAreSentAndTakenOver_data() { blocks(); }
    void stripChangesAreSentAndTakenOver();
    void dialsAreSentTogether();
    void clearSendsOneMixer();
    void toneGeneratorSendsWhatRests();
    void deviceReachesOpenEditors();

private:
    static void blocks();
    BlockEditor *open(const QString &block, const QString &className) const;
    BlockEditor *openMixer() const
    {
        return open(QStringLiteral("MatrixMixer"), QStringLiteral("MatrixMixerForm"));
    }
    static VmDial *dialAt(BlockEditor *mixer, int source, int sink);
};

void DspTest::cleanup()
{
    for (const char *block :
         {"BtInGain", "NetRxGain", "UsbInGain", "MatrixMixer", "BtOutGain", "NetTxGain", "UsbOutGain"})
        QMetaObject::invokeMethod(session->editor(), QByteArray("on") + block + "Closed");
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

void DspTest::blocks()
{
    QTest::addColumn<QString>("block");
    QTest::addColumn<QString>("className");
    QTest::addColumn<QString>("section"); // empty for the mixer
    QTest::addColumn<QByteArray>("element");
    QTest::addColumn<int>("channels");
    const auto row = [](const char *title, const char *block, const char *className, const char *section,
                        const char *element, int channels) {
        QTest::newRow(title) << block << className << section << QByteArray(element) << channels;
    };
    row("Bluetooth In", "BtInGain", "BtInForm", "/preset/dsp/bt_sink", "PRESET_BT_SINK", 2);
    row("Dante Network Rx", "NetRxGain", "NetRxForm", "/preset/dsp/dante_rx", "PRESET_RX", 4);
    row("USB Playback", "UsbInGain", "UsbInForm", "/preset/dsp/usb_playback", "PRESET_USB_PLAYBACK", 2);
    row("Matrix Mixer", "MatrixMixer", "MatrixMixerForm", "", "", 0);
    row("Bluetooth Out", "BtOutGain", "BtOutForm", "/preset/dsp/bt_source", "PRESET_BT_SOURCE", 1);
    row("Dante Network Tx", "NetTxGain", "NetTxForm", "/preset/dsp/dante_tx", "PRESET_TX", 4);
    row("USB Record", "UsbOutGain", "UsbOutForm", "/preset/dsp/usb_record", "PRESET_USB_RECORD", 2);
}

BlockEditor *DspTest::open(const QString &block, const QString &className) const
{
    QMetaObject::invokeMethod(session->editor(),
                              QStringLiteral("on%1Clicked").arg(block).toLatin1().constData());
    for (QWidget *widget : QApplication::topLevelWidgets()) {
        if (widget->isVisible() && className == QLatin1String(widget->metaObject()->className()))
            return qobject_cast<BlockEditor *>(widget);
    }
    return nullptr;
}

VmDial *DspTest::dialAt(BlockEditor *mixer, int source, int sink)
{
    auto *table = mixer->findChild<QTableWidget *>(QStringLiteral("tableWidget"));
    return table->cellWidget(source + 1, sink + 1)->findChild<VmDial *>(QStringLiteral("vmdial"));
}

void DspTest::opensOnceAndCloses()
{
    QFETCH(QString, block);
    QFETCH(QString, className);
    const QPointer<BlockEditor> editor = open(block, className);
    QVERIFY(editor && !editor->isModal() && !editor->parentWidget());
    QCOMPARE(editor->windowTitle(), QLatin1String(QTest::currentDataTag()));
    QCOMPARE(open(block, className), editor.data());
    QVERIFY2(!qobject_cast<QAbstractButton *>(editor->focusWidget()), "a blank would mute or clear");
    QTest::keyClick(editor, Qt::Key_Escape);
    QTRY_VERIFY(!editor);
    const QPointer<QWidget> again = open(block, className);
    QVERIFY(again);
    again->close();
    QTRY_VERIFY(!again);
}

void DspTest::stripChangesAreSentAndTakenOver()
{
    QFETCH(QString, block);
    QFETCH(QString, className);
    QFETCH(QString, section);
    QFETCH(QByteArray, element);
    QFETCH(int, channels);
    BlockEditor *editor = open(block, className);
    const auto mutes = editor->findChildren<QPushButton *>(QStringLiteral("digital_mute_pushButton"));
    const auto faders = editor->findChildren<VmDspGain *>(QStringLiteral("vmdspgain"));
    QCOMPARE(QSize(mutes.size(), faders.size()), QSize(channels, channels));
    if (section.isEmpty())
        return;
    const QByteArray channel = "{\"set\":\"" + section.toLatin1() + '/' + QByteArray::number(channels - 1);
    QCOMPARE(sentBy([&] {
                 QTest::mouseClick(mutes.last(), Qt::LeftButton);
                 QTest::keyClick(faders.last(), Qt::Key_Up);
                 QTest::keyClick(faders.last(), Qt::Key_Up);
             }),
             channel + "/mute\", \"value\":1}\n" + channel + "/gain\", \"value\":1}\n" + channel
                 + "/gain\", \"value\":2}");
    QVERIFY(session->plugin->getSettingsChanged());
    const QByteArray cached = session->cached(element.constData());
    QCOMPARE(cached.count("\"gain\":2") + 10 * cached.count("\"mute\":true"), 11);
    QVERIFY(cached.mid(cached.lastIndexOf("{\"gain\"")).contains("\"gain\":2"));
    // A reload shows what the device holds and sends nothing.
    session->script->deliverGet(section, session->script->value(section));
    QCOMPARE(sentBy([] {}), QByteArray());
    QVERIFY(faders.last()->Gain() == 0.0 && !mutes.last()->isChecked());
}

void DspTest::dialsAreSentTogether()
{
    BlockEditor *mixer = openMixer();
    for (int turn = 0; turn < 5; ++turn)
        QTest::keyClick(dialAt(mixer, 2, 5), Qt::Key_Up);
    // Halves go up.
    emit qobject_cast<MatrixMixerForm *>(mixer)->uiMixChanged({{9, 0}, {CrosspointLevel, 2.5}});
    emit qobject_cast<MatrixMixerForm *>(mixer)->uiMixChanged({{8, 0}, {CrosspointLevel, -2.5}});
    QTRY_VERIFY(!session->script->commands().isEmpty());
    QByteArray rows = "[[-100,-100,-100,-100,-100,-100,-100,-100,-2,3]";
    for (int sink = 1; sink < 7; ++sink)
        rows += sink == 5 ? ",[-100,-100,-95,-100,-100,-100,-100,-100,-100,-100]"
                          : ",[-100,-100,-100,-100,-100,-100,-100,-100,-100,-100]";
    const QString message
        = QStringLiteral("{\"set\":\"/preset/dsp/mixer\",\"value\":%1]}").arg(QString::fromLatin1(rows));
    QCOMPARE(session->script->commands(), QStringList(message));
    QCOMPARE(session->cached("PRESET_MIXER"), rows + ']');
    QVERIFY(session->plugin->getSettingsChanged());
}

void DspTest::clearSendsOneMixer()
{
    BlockEditor *mixer = openMixer();
    session->script->deliverGet(QStringLiteral("/preset/dsp/mixer/4"), QJsonArray{-10});
    VmDial *dial = dialAt(mixer, 0, 4);
    QTest::mouseClick(mixer->findChild<QPushButton *>(QStringLiteral("reset_pushButton")), Qt::LeftButton);
    QCOMPARE(dial->Val(), -10.0);
    QTRY_COMPARE(session->script->commands().size(), 1);
    QCOMPARE(session->script->commands().first().count(QLatin1String("-100")), 70);
    QTRY_COMPARE(dial->Val(), -100.0);
    QCOMPARE(session->script->commands().size(), 1);
}

void DspTest::toneGeneratorSendsWhatRests()
{
    BlockEditor *mixer = openMixer();
    auto *frequency = mixer->findChild<QSpinBox *>(QStringLiteral("tone_gen_freq_spinBox"));
    QCOMPARE(frequency->value(), 440);
    frequency->selectAll();
    QTest::keyClicks(frequency, QStringLiteral("1000"));
    QTest::mouseClick(mixer->findChild<QCheckBox *>(QStringLiteral("tone_gen_en_checkBox")), Qt::LeftButton,
                      {}, {8, 8});
    QTest::keyClick(mixer->findChild<QSpinBox *>(QStringLiteral("tone_gen_level_spinBox")), Qt::Key_Up);
    QTRY_COMPARE(session->cached("SYSTEM_FUNC_GEN"),
                 QByteArray(R"({"amplitude":-19,"enable":true,"frequency":1000})"));
    QCOMPARE(session->script->commands().join(QLatin1Char(' ')),
             QStringLiteral("{\"set\":\"/system/function_gen/enable\", \"value\":1} "
                            "{\"set\":\"/system/function_gen/frequency\", \"value\":1000} "
                            "{\"set\":\"/system/function_gen/amplitude\", \"value\":-19}"));
    // What the device says is shown on the next click on the block.
    session->script->deliverGet(QStringLiteral("/system/function_gen"),
                                QJsonObject{{QStringLiteral("frequency"), 5555}});
    QCOMPARE(frequency->value(), 1000);
    QCOMPARE(sentBy([this] { openMixer(); }), QByteArray());
    QCOMPARE(frequency->value(), 5555);
}

void DspTest::deviceReachesOpenEditors()
{
    BlockEditor *playback = open(QStringLiteral("UsbInGain"), QStringLiteral("UsbInForm"));
    BlockEditor *record = open(QStringLiteral("UsbOutGain"), QStringLiteral("UsbOutForm"));
    BlockEditor *mixer = openMixer();
    const auto faders = playback->findChildren<VmDspGain *>();
    const auto mutes = playback->findChildren<QPushButton *>(QStringLiteral("digital_mute_pushButton"));
    session->deviceReports(QStringLiteral("/preset/dsp/usb_playback"), R"([{"gain":-9},{"gain":-9}])");
    QMetaObject::invokeMethod(session->editor(), "meteringLevels",
                              Q_ARG(QByteArray, QByteArray(19, char(-7))));
    QCOMPARE(playback->findChild<VMMeter *>()->property("dbValuePort1"), QVariant(-7.0));
    for (const char *mode : {"speakerphone_ec", "2x2"}) {
        const bool soundCard = QByteArray(mode) == "2x2";
        session->deviceReports(QStringLiteral("/system/usb"), QByteArray("{\"mode\":\"") + mode + "\"}");
        QVERIFY(faders.first()->isEnabled() && dialAt(mixer, 0, 0)->isEnabled());
        QCOMPARE(faders.last()->isEnabled(), soundCard);
        QCOMPARE(faders.last()->Gain(), soundCard ? -9.0 : 0.0);
        QVERIFY(!mutes.last()->isChecked());
        QCOMPARE(record->findChildren<VmDspGain *>().last()->isEnabled(), soundCard);
        QCOMPARE(dialAt(mixer, 7, 0)->isEnabled(), soundCard);
    }
}

QTEST_MAIN(DspTest)
#include "tst_dsp.moc"
