// The block editors as the window opens, wires and closes them: what they show of the device, and what each
// change of the user sends.

#include "dsp/matrix_mixer_form.h"
#include "dsp/overlay.h"
#include "dsp/strip_editor.h"
#include "tests/editor/live_editor_test.h"
#include "widgets/vm_dial.h"
#include "widgets/vm_dsp_gain.h"
#include "widgets/vm_meter.h"

#include <QCheckBox>
#include <QLabel>
#include <QPushButton>
#include <QSpinBox>
#include <QTableWidget>

namespace {

/// One block as the device's documentation describes it; for the mixer only the first three.
struct Block
{
    const char *title;
    const char *name; ///< part of the window's slots
    const char *className;
    const char *section;
    const char *changed; ///< the window's slot for what the user changes
    const char *labels;
    int firstLevelByte;
};

// clang-format off
const Block Blocks[] = {
    {"Bluetooth In", "BtInGain", "BtInForm", "bt_sink", "onUiDspBtInStripChange", "BT 1,BT 2", 9},
    {"Dante Network Rx", "NetRxGain", "NetRxForm", "dante_rx", "onUiDspNetRxStripChanged",
     "CH 1,CH 2,CH 3,CH 4", 3},
    {"USB Playback", "UsbInGain", "UsbInForm", "usb_playback", "onUiDspUsbInStripChanged", "CH 1,CH 2", 7},
    {"Matrix Mixer", "MatrixMixer", "MatrixMixerForm", nullptr, nullptr, nullptr, 0},
    {"Bluetooth Out", "BtOutGain", "BtOutForm", "bt_source", "onUiDspBtOutStripChange", "BT Out 1", 18},
    {"Dante Network Tx", "NetTxGain", "NetTxForm", "dante_tx", "onUiDspNetTxStripChanged",
     "CH 1,CH 2,CH 3,CH 4", 12},
    {"USB Record", "UsbOutGain", "UsbOutForm", "usb_record", "onUiDspUsbOutStripChanged", "CH 1,CH 2", 16},
};
// clang-format on

} // namespace

Q_DECLARE_METATYPE(Block)

class DspTest : public LiveEditorTest
{
    Q_OBJECT

private slots:
    void cleanup();
    void opensOnceAndCloses_data() { addBlocks(); }
    void opensOnceAndCloses();
    void stripsShowTheDevice_data() { addBlocks(true); }
    void stripsShowTheDevice();
    void unavailableStripStandsStill_data() { addBlocks(true); }
    void unavailableStripStandsStill();
    void stripsSurviveOddSections_data();
    void stripsSurviveOddSections();
    void stripChangesAreSentAndTakenOver_data() { addBlocks(true); }
    void stripChangesAreSentAndTakenOver();
    void dialsAreSentTogether();
    void clearSendsOneMixer();
    void toneGeneratorSendsWhatRests();
    void followsTheUsbMode();

private:
    static void addBlocks(bool onlyStrips = false);
    BlockEditor *open(const char *title) const;
    BlockEditor *open(const Block &block) const { return open(block.title); }
    BlockEditor *openMixer() const { return open("Matrix Mixer"); }
    void report(const char *section, const QByteArray &json) const
    {
        session->deviceReports(QStringLiteral("/preset/dsp/") + QLatin1String(section), json);
    }
    void sendLevels(const QByteArray &datagram) const
    {
        QMetaObject::invokeMethod(session->editor(), "meteringLevels", Q_ARG(QByteArray, datagram));
    }
    static VmDial *dialAt(BlockEditor *mixer, int source, int sink);
};

void DspTest::cleanup()
{
    for (const Block &block : Blocks)
        QMetaObject::invokeMethod(session->editor(), QByteArray("on") + block.name + "Closed");
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

void DspTest::addBlocks(bool onlyStrips)
{
    QTest::addColumn<Block>("block");
    for (const Block &block : Blocks) {
        if (block.section || !onlyStrips)
            QTest::newRow(block.title) << block;
    }
}

BlockEditor *DspTest::open(const char *title) const
{
    const auto *block = std::find_if(std::begin(Blocks), std::end(Blocks),
                                     [title](const Block &each) { return qstrcmp(each.title, title) == 0; });
    QMetaObject::invokeMethod(session->editor(), QByteArray("on") + block->name + "Clicked");
    for (QWidget *widget : QApplication::topLevelWidgets()) {
        if (widget->isVisible() && qstrcmp(block->className, widget->metaObject()->className()) == 0)
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
    QFETCH(Block, block);
    const QPointer<BlockEditor> editor = open(block);
    QVERIFY(editor && !editor->isModal() && !editor->parentWidget());
    QCOMPARE(editor->windowTitle(), QLatin1String(block.title));
    QCOMPARE(open(block), editor.data());
    QVERIFY2(!qobject_cast<QAbstractButton *>(editor->focusWidget()), "a blank would mute or clear");
    QTest::keyClick(editor, Qt::Key_Escape);
    QTRY_VERIFY(!editor);
    const QPointer<QWidget> again = open(block);
    QVERIFY(QTest::qWaitForWindowActive(again));
    QTest::keyClick(again, Qt::Key_W, Qt::ControlModifier);
    QTRY_VERIFY(!again);
}

void DspTest::stripsShowTheDevice()
{
    QFETCH(Block, block);
    auto *editor = qobject_cast<StripEditor *>(open(block));
    const auto faders = editor->findChildren<VmDspGain *>(QStringLiteral("vmdspgain"));
    const auto mutes = editor->findChildren<QPushButton *>(QStringLiteral("digital_mute_pushButton"));
    QStringList labels;
    for (const QLabel *label : editor->findChildren<QLabel *>(QStringLiteral("strip_label")))
        labels.append(label->text());
    QCOMPARE(labels.join(QLatin1Char(',')), QLatin1String(block.labels));
    for (const char *hidden :
         {"block_label", "digital_invert_pushButton", "limiter_widget", "usb_host_widget"}) {
        for (const QWidget *widget : editor->findChildren<QWidget *>(QLatin1String(hidden)))
            QVERIFY2(widget->isHidden(), hidden);
    }

    report(block.section, R"([{"mute":false,"gain":-1},{"mute":true,"gain":-11},
                              {"mute":false,"gain":-21},{"mute":true,"gain":-31}])");
    QByteArray levels(19, '\x81');
    for (int channel = 0; channel < labels.size(); ++channel)
        levels[block.firstLevelByte + channel] = char(-10 * channel);
    sendLevels(levels);
    for (int channel = 0; channel < labels.size(); ++channel) {
        QCOMPARE(faders.at(channel)->Gain(), -1.0 - 10 * channel);
        QCOMPARE(mutes.at(channel)->isChecked(), channel % 2 == 1);
        QCOMPARE(faders.at(channel)->getMeter()->dbValuePort1(), -10.0 * channel);
    }
    const int last = labels.size() - 1;
    levels[block.firstLevelByte + last] = char(-128);
    for (int length : {0, 1, block.firstLevelByte + last})
        sendLevels(levels.left(length));
    QCOMPARE(faders.last()->getMeter()->dbValuePort1(), -10.0 * last);
    sendLevels(levels + QByteArray(65000, '\x7f'));
    QCOMPARE(faders.last()->getMeter()->dbValuePort1(), -128.0);
    QCOMPARE(sentBy([] {}), QByteArray());
}

/// Under red where its mode can take it away.
void DspTest::unavailableStripStandsStill()
{
    QFETCH(Block, block);
    auto *editor = qobject_cast<StripEditor *>(open(block));
    const auto *fader = editor->findChild<VmDspGain *>(QStringLiteral("vmdspgain"));
    const auto isCovered = [editor] {
        const auto *overlay = editor->findChild<Overlay *>();
        return overlay && overlay->isVisible();
    };
    report(block.section, R"([{"gain":-1}])");
    editor->onEnableStrip(0, false);
    report(block.section, R"([{"gain":9}])");
    sendLevels(QByteArray(19, char(-7)));
    QCOMPARE(fader->Gain(), -1.0);
    QVERIFY(fader->getMeter()->dbValuePort1() != -7.0);
    QTRY_COMPARE(isCovered(), QByteArray(block.section) != "dante_rx");
    editor->onEnableStrip(0, true);
    editor->onEnableStrip(200, false);
    editor->onDataChanged();
    QCOMPARE(fader->Gain(), 9.0);
    QTRY_VERIFY(!isCovered());
    QCOMPARE(sentBy([] {}), QByteArray());
}

void DspTest::stripsSurviveOddSections_data()
{
    QTest::addColumn<QByteArray>("json");
    QTest::addColumn<bool>("mute"); // of the second channel, which was muted at -11 dB
    QTest::addColumn<double>("gain");
    QTest::newRow("no array") << QByteArray("{}") << true << -11.0;
    QTest::newRow("one channel") << QByteArray(R"([{"gain":3}])") << true << -11.0;
    QTest::newRow("no objects") << QByteArray(R"([1,"x",null,[]])") << false << 0.0;
    QTest::newRow("other types") << QByteArray(R"([{},{"mute":1,"gain":"-3","invert":"on"}])") << false
                                 << 0.0;
    QTest::newRow("too loud") << QByteArray(R"([{},{"gain":2000000}])") << false << 20.0;
}

void DspTest::stripsSurviveOddSections()
{
    QFETCH(QByteArray, json);
    BlockEditor *editor = open("Dante Network Rx");
    report("dante_rx", R"([{},{"mute":true,"gain":-11}])");
    report("dante_rx", json);
    QTEST(editor->findChildren<QPushButton *>(QStringLiteral("digital_mute_pushButton")).at(1)->isChecked(),
          "mute");
    QTEST(editor->findChildren<VmDspGain *>().at(1)->Gain(), "gain");
}

void DspTest::stripChangesAreSentAndTakenOver()
{
    QFETCH(Block, block);
    report(block.section, R"([{"gain":0},{"gain":0},{"gain":0},{"gain":0}])");
    BlockEditor *editor = open(block);
    auto *mute = editor->findChildren<QPushButton *>(QStringLiteral("digital_mute_pushButton")).last();
    auto *fader = editor->findChildren<VmDspGain *>().last();
    const int last = QByteArray(block.labels).count(',');
    const QByteArray path
        = QByteArray("{\"set\":\"/preset/dsp/") + block.section + '/' + QByteArray::number(last);
    QCOMPARE(sentBy([&] {
                 QTest::mouseClick(mute, Qt::LeftButton);
                 QTest::keyClick(fader, Qt::Key_Up);
                 QTest::keyClick(fader, Qt::Key_Up);
             }),
             path + "/mute\", \"value\":1}\n" + path + "/gain\", \"value\":1}\n" + path
                 + "/gain\", \"value\":2}");
    QVERIFY(session->plugin->getSettingsChanged());
    // What the device confirmed is in the cache, from which another editor reads it.
    editor->close();
    QCOMPARE(sentBy([&] {
                 emit qobject_cast<StripEditor *>(editor)->uiChanged({0, {0, true}});
             }),
             QByteArray());
    editor = open(block);
    QCOMPARE(editor->findChildren<VmDspGain *>().last()->Gain(), 2.0);
    QVERIFY(
        editor->findChildren<QPushButton *>(QStringLiteral("digital_mute_pushButton")).last()->isChecked());
    QCOMPARE(sentBy([&] {
                 QMetaObject::invokeMethod(session->editor(), block.changed,
                                           QArgument<ChannelRecord>("QPair<int,QPair<int,QVariant> >",
                                                                    ChannelRecord(last, {0, false})));
             }),
             path + "/mute\", \"value\":0}");
}

void DspTest::dialsAreSentTogether()
{
    BlockEditor *mixer = openMixer();
    for (int turn = 0; turn < 5; ++turn)
        QTest::keyClick(dialAt(mixer, 2, 5), Qt::Key_Up, Qt::ControlModifier);
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
    QTest::keyClicks(frequency, QStringLiteral("99999"));
    QTest::keyClick(frequency, Qt::Key_Return);
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

void DspTest::followsTheUsbMode()
{
    BlockEditor *playback = open("USB Playback");
    BlockEditor *record = open("USB Record");
    BlockEditor *mixer = openMixer();
    const auto faders = playback->findChildren<VmDspGain *>();
    const auto mutes = playback->findChildren<QPushButton *>(QStringLiteral("digital_mute_pushButton"));
    const auto dials = mixer->findChildren<VmDial *>();
    report("usb_playback", R"([{"gain":-9},{"mute":true,"gain":-9}])");
    for (const char *mode : {"speakerphone_ec", "2x2"}) {
        const bool soundCard = QByteArray(mode) == "2x2";
        session->deviceReports(QStringLiteral("/system/usb"), QByteArray("{\"mode\":\"") + mode + "\"}");
        QVERIFY(faders.first()->isEnabled());
        QCOMPARE(faders.last()->isEnabled(), soundCard);
        QCOMPARE(faders.last()->Gain(), soundCard ? -9.0 : 0.0);
        QCOMPARE(mutes.last()->isChecked(), soundCard);
        QCOMPARE(record->findChildren<VmDspGain *>().last()->isEnabled(), soundCard);
        // Of the mixer the row of BT IN 2 and the column of BT OUT 1, which still show what the device says.
        const auto isOff = [](const VmDial *dial) { return !dial->isEnabled(); };
        QCOMPARE(std::count_if(dials.begin(), dials.end(), isOff), soundCard ? 0 : 7 + 10 - 1);
        QCOMPARE(dialAt(mixer, 7, 0)->isEnabled() || dialAt(mixer, 9, 6)->isEnabled(), soundCard);
        QTRY_COMPARE(mixer->findChildren<Overlay *>().size(), 16);
        session->script->deliverGet(QStringLiteral("/preset/dsp/mixer/3"),
                                    QJsonArray{0, 0, 0, 0, 0, 0, 0, -8});
        QCOMPARE(dialAt(mixer, 7, 3)->Val(), -8.0);
    }
}

QTEST_MAIN(DspTest)
#include "tst_dsp.moc"
