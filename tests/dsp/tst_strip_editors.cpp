#include "tests/dsp/block_cases.h"
#include "tests/dsp/strip_probe.h"

#include <QJsonDocument>
#include <QLineEdit>
#include <QTest>

/// The six strip editors: what they show of their section, and what they report of the hand.
class StripEditorsTest : public QObject
{
    Q_OBJECT

private slots:
    void showsItsSection_data() { addBlocks(); }
    void showsItsSection();
    void reportsEachChangeByHandOnce_data() { addBlocks(); }
    void reportsEachChangeByHandOnce();
    void reloadsSilentlyAndLeavesDisabledStripsAlone_data() { addBlocks(); }
    void reloadsSilentlyAndLeavesDisabledStripsAlone();
    void survivesOddSections_data();
    void survivesOddSections();
    void feedsMetersFromTheirOwnBytes_data() { addBlocks(); }
    void feedsMetersFromTheirOwnBytes();
    void takesUsbChannelsAway_data();
    void takesUsbChannelsAway();
    void addressesStripsByChannel();
    void ignoresStrangers();
    void asksToBeClosed_data();
    void asksToBeClosed();

private:
    static void addBlocks()
    {
        QTest::addColumn<BlockCase>("block");
        for (const BlockCase &block : blockCases())
            QTest::newRow(block.name) << block;
    }
};

void StripEditorsTest::showsItsSection()
{
    QFETCH(BlockCase, block);
    const QJsonObject section = sectionOf(block.channels());
    const auto editor = block.open(section);
    editor->show();

    QCOMPARE(editor->findChildren<ChannelStrip *>().size(), block.channels());
    QVERIFY(child<QLabel>(*editor, "block_label").isHidden());
    for (int channel = 0; channel < block.channels(); ++channel) {
        const StripProbe probe(*editor, channel);
        const bool odd = channel % 2 == 1;
        QVariantList expected{odd, -1.0 - 10 * channel, odd};
        if (!block.isInput())
            expected << -30 - channel;
        QCOMPARE(probe.shown(block.isInput()), expected);
        QCOMPARE(probe.label(), block.labels.at(channel));
        QCOMPARE(probe.strip().size(), QSize(92, 324));
        QCOMPARE(
            child<QWidget>(probe.strip(), block.isInput() ? "digital_invert_pushButton" : "limiter_widget")
                .isHidden(),
            true);
    }
}

void StripEditorsTest::reportsEachChangeByHandOnce()
{
    QFETCH(BlockCase, block);
    const QJsonObject section = sectionOf(block.channels());
    const auto editor = block.open(section);
    EditorRecords records(*editor);
    editor->show();

    for (int channel = 0; channel < block.channels(); ++channel) {
        const StripProbe probe(*editor, channel);
        const bool odd = channel % 2 == 1;
        QTest::mouseClick(&probe.mute(), Qt::LeftButton);
        QCOMPARE(records.take(), QVector<ChannelRecord>({{channel, {0, !odd}}}));

        QTest::keyClick(&probe.fader(), Qt::Key_Up);
        const QVector<ChannelRecord> gains = records.take();
        QCOMPARE(gains, QVector<ChannelRecord>({{channel, {block.gainParameter, -10.0 * channel}}}));
        QCOMPARE(gains.first().second.second.type(), QVariant::Double);

        if (block.isInput()) {
            probe.invert().click();
            QCOMPARE(records.take(), QVector<ChannelRecord>({{channel, {1, !odd}}}));
        } else {
            probe.limiter().click();
            QCOMPARE(records.take(), QVector<ChannelRecord>({{channel, {2, !odd}}}));
        }
    }
    QCOMPARE(section, sectionOf(block.channels()));
}

void StripEditorsTest::reloadsSilentlyAndLeavesDisabledStripsAlone()
{
    QFETCH(BlockCase, block);
    QJsonObject section;
    const auto editor = block.open(section);
    EditorRecords records(*editor);
    const StripProbe first(*editor, 0);
    const StripProbe last(*editor, block.channels() - 1);
    QCOMPARE(first.fader().Gain(), 0.0);

    editor->onEnableStrip(uchar(block.channels() - 1), false);
    section = sectionOf(block.channels());
    editor->onDataChanged();
    QCOMPARE(last.fader().Gain(), 0.0);
    if (block.channels() > 1)
        QCOMPARE(first.fader().Gain(), -1.0);

    editor->onEnableStrip(uchar(block.channels() - 1), true);
    editor->onDataChanged();
    QCOMPARE(last.fader().Gain(), -1.0 - 10 * (block.channels() - 1));
    QVERIFY(records.all().isEmpty());
}

void StripEditorsTest::survivesOddSections_data()
{
    QTest::addColumn<QByteArray>("json");
    QTest::addColumn<QVariantList>("second"); // mute, gain, invert of channel 2, which showed true, -11, true
    const QVariantList untouched{true, -11.0, true};
    const QVariantList cleared{false, 0.0, false};
    QTest::newRow("no value") << QByteArray(R"({"result":"OK"})") << untouched;
    QTest::newRow("value is a text") << QByteArray(R"({"value":"mute"})") << untouched;
    QTest::newRow("value is an object") << QByteArray(R"({"value":{"gain":3}})") << untouched;
    QTest::newRow("no channels") << QByteArray(R"({"value":[]})") << untouched;
    QTest::newRow("one channel") << QByteArray(R"({"value":[{"gain":3}]})") << untouched;
    QTest::newRow("channels are no objects") << QByteArray(R"({"value":[1,"x",null,[]]})") << cleared;
    QTest::newRow("members missing") << QByteArray(R"({"value":[{},{},{},{}]})") << cleared;
    QTest::newRow("members of other types")
        << QByteArray(R"({"value":[{},{"mute":1,"gain":"-3","invert":"true"}]})") << cleared;
    QTest::newRow("gain is no whole number") << QByteArray(R"({"value":[{},{"gain":-3.5}]})") << cleared;
    QTest::newRow("gain out of range")
        << QByteArray(R"({"value":[{},{"gain":2000000}]})") << QVariantList{false, 20.0, false};
    QTest::newRow("too many channels")
        << QByteArray(R"({"value":[{},{"gain":7},{},{},{},{},{}]})") << QVariantList{false, 7.0, false};
}

void StripEditorsTest::survivesOddSections()
{
    QFETCH(QByteArray, json);
    QFETCH(QVariantList, second);
    QJsonObject section = sectionOf(4);
    NetRxForm editor(4, &section);
    EditorRecords records(editor);

    section = QJsonDocument::fromJson(json).object();
    editor.onDataChanged();
    QCOMPARE(StripProbe(editor, 1).shown(true), second);
    QVERIFY(records.all().isEmpty());
}

void StripEditorsTest::feedsMetersFromTheirOwnBytes()
{
    QFETCH(BlockCase, block);
    const QJsonObject section;
    const auto editor = block.open(section);
    const int last = block.channels() - 1;
    const int lastByte = block.firstLevelByte + last;
    QByteArray datagram(19, '\x81');
    for (int channel = 0; channel <= last; ++channel)
        datagram[block.firstLevelByte + channel] = char(-10 * channel);

    editor->onLevels(datagram);
    for (int channel = 0; channel <= last; ++channel)
        QCOMPARE(StripProbe(*editor, channel).level(), -10.0 * channel);

    datagram[lastByte] = char(-128);
    for (int length : {0, 1, lastByte})
        editor->onLevels(datagram.left(length));
    QCOMPARE(StripProbe(*editor, last).level(), -10.0 * last);

    editor->onEnableStrip(uchar(last), false);
    editor->onLevels(datagram);
    QCOMPARE(StripProbe(*editor, last).level(), -10.0 * last);

    editor->onEnableStrip(uchar(last), true);
    datagram.append(QByteArray(65507 - datagram.size(), '\x7f'));
    editor->onLevels(datagram);
    QCOMPARE(StripProbe(*editor, last).level(), -128.0);
}

void StripEditorsTest::takesUsbChannelsAway_data()
{
    QTest::addColumn<int>("channel");
    QTest::addColumn<int>("type");
    QTest::addColumn<bool>("enabled"); // of the second strip, enabled before
    QTest::newRow("second taken") << 1 << 0 << false;
    QTest::newRow("low eight bits count") << 257 << 0 << false;
    QTest::newRow("negative, ends with 1") << -255 << 0 << false;
    QTest::newRow("no such channel") << 2 << 0 << true;
    QTest::newRow("unknown type") << 1 << 2 << true;
    QTest::newRow("given") << 1 << 1 << true;
}

void StripEditorsTest::takesUsbChannelsAway()
{
    QFETCH(int, channel);
    QFETCH(int, type);
    QFETCH(bool, enabled);
    const QJsonObject section = sectionOf(2);
    UsbInForm playback(2, &section);
    UsbOutForm record(2, &section);
    EditorRecords playbackRecords(playback);
    EditorRecords recordRecords(record);
    const StripProbe in(playback, 1);
    const StripProbe out(record, 1);

    playback.onUsbMode(channel, type);
    record.onUsbMode(channel, type);
    QCOMPARE(in.strip().isEnabled(), enabled);
    QCOMPARE(out.strip().isEnabled(), enabled);
    QCOMPARE(in.shown(true), enabled ? QVariantList({true, -11.0, true}) : QVariantList({false, 0.0, false}));
    // The limiter is no part of the channel's availability.
    QCOMPARE(out.shown(false), QVariantList({enabled, enabled ? -11.0 : 0.0, true, -31}));

    playback.onUsbMode(1, 1);
    record.onUsbMode(1, 1);
    QCOMPARE(in.shown(true), QVariantList({true, -11.0, true}));
    QCOMPARE(out.shown(false), QVariantList({true, -11.0, true, -31}));
    QVERIFY(playbackRecords.all().isEmpty() && recordRecords.all().isEmpty());
}

void StripEditorsTest::addressesStripsByChannel()
{
    const QJsonObject section = sectionOf(2);
    UsbInForm editor(2, &section);
    EditorRecords records(editor);
    const StripProbe second(editor, 1);

    editor.onSetStripLabel(1, QStringLiteral("Right"));
    QCOMPARE(second.label(), QStringLiteral("Right"));
    editor.onChanged({1, {2, 5.9}});
    QCOMPARE(second.fader().Gain(), 5.9);
    editor.onChanged({1, {77, 1}});
    QCOMPARE(second.shown(true), QVariantList({true, 5.9, true}));

    editor.onSetStripLabel(2, QStringLiteral("None"));
    editor.onEnableStrip(255, false);
    editor.onChanged({-1, {0, true}});
    editor.onChanged({2, {0, true}});
    QCOMPARE(StripProbe(editor, 0).shown(true), QVariantList({false, -1.0, false}));
    QVERIFY(records.all().isEmpty());

    editor.onUsbHostStatus(QStringLiteral("80 %"), QStringLiteral("off"));
    QCOMPARE(child<QLineEdit>(editor, "usb_host_vol_lineEdit").text(), QStringLiteral("80 %"));
    QCOMPARE(child<QLineEdit>(editor, "usb_host_mute_lineEdit").text(), QStringLiteral("off"));
    QVERIFY(child<QWidget>(editor, "usb_host_widget").isHidden());
}

void StripEditorsTest::ignoresStrangers()
{
    const QJsonObject section = sectionOf(4);
    NetRxForm editor(4, &section);
    NetRxForm other(4, &section);
    EditorRecords records(editor);
    connect(&StripProbe(other, 1).strip(), &ChannelStrip::uiChanged, &editor, &StripEditor::onUiChanged);

    StripProbe(other, 1).mute().click();
    editor.onUiChanged({0, true});
    QVERIFY(records.all().isEmpty());
}

void StripEditorsTest::asksToBeClosed_data()
{
    QTest::addColumn<bool>("byEscape");
    QTest::newRow("Escape") << true;
    QTest::newRow("frame") << false;
}

void StripEditorsTest::asksToBeClosed()
{
    QFETCH(bool, byEscape);
    const QJsonObject section = sectionOf(4);
    QPointer<StripEditor> editor = new NetTxForm(4, &section);
    int asked = 0;
    connect(editor, &BlockEditor::close, this, [&asked] { ++asked; });
    editor->show();

    if (byEscape)
        QTest::keyClick(editor, Qt::Key_Escape);
    else
        editor->QWidget::close();
    QCOMPARE(asked, 1);
    QCOMPARE(editor->isVisible(), byEscape);

    connect(editor, &BlockEditor::close, editor, &QObject::deleteLater);
    editor->reject();
    QTRY_VERIFY(!editor);
}

QTEST_MAIN(StripEditorsTest)
#include "tst_strip_editors.moc"
