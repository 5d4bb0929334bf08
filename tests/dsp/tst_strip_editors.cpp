#include "dsp/overlay.h"
#include "tests/dsp/strip_probe.h"

#include <QJsonDocument>
#include <QLabel>
#include <QTest>

namespace {

/// One strip editor as the device's documentation describes it, written out so that no expected value comes
/// from the code under test.
struct Block
{
    StripEditor *(*make)(const QJsonObject *section);
    const char *labels;
    int gainParameter;
    int firstLevelByte;
    bool overlay;
};

template <typename Form, int Channels>
StripEditor *makeForm(const QJsonObject *section)
{
    return new Form(Channels, section);
}

} // namespace

Q_DECLARE_METATYPE(Block)

/// The six strip editors: what they show of their section, and what they report of the hand.
class StripEditorsTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void showsItsSection_data() { addBlocks(); }
    void showsItsSection();
    void reportsEachChangeByHandOnce_data() { addBlocks(); }
    void reportsEachChangeByHandOnce();
    void feedsMetersFromTheirOwnBytes_data() { addBlocks(); }
    void feedsMetersFromTheirOwnBytes();
    void disabledStripsStandStillUnderRed_data() { addBlocks(); }
    void disabledStripsStandStillUnderRed();
    void survivesOddSections_data();
    void survivesOddSections();
    void takesUsbChannelsAway_data();
    void takesUsbChannelsAway();
    void stepsTheThreshold_data();
    void stepsTheThreshold();

private:
    void addBlocks();
    void open(StripEditor *editor);
    void openBlock(const Block &block) { open(block.make(&m_section)); }
    int lastChannel() const { return m_editor->findChildren<ChannelStrip *>().size() - 1; }

    QJsonObject m_section;
    QScopedPointer<StripEditor> m_editor;
    QVector<ChannelRecord> m_records;
};

void StripEditorsTest::init()
{
    m_section = sectionOf(4);
}

void StripEditorsTest::addBlocks()
{
    QTest::addColumn<Block>("block");
    QTest::newRow("network receive") << Block{makeForm<NetRxForm, 4>, "CH 1,CH 2,CH 3,CH 4", 2, 3, false};
    QTest::newRow("USB playback") << Block{makeForm<UsbInForm, 2>, "CH 1,CH 2", 2, 7, true};
    QTest::newRow("Bluetooth in") << Block{makeForm<BtInForm, 2>, "BT 1,BT 2", 2, 9, true};
    QTest::newRow("network transmit") << Block{makeForm<NetTxForm, 4>, "CH 1,CH 2,CH 3,CH 4", 1, 12, true};
    QTest::newRow("USB record") << Block{makeForm<UsbOutForm, 2>, "CH 1,CH 2", 1, 16, true};
    QTest::newRow("Bluetooth out") << Block{makeForm<BtOutForm, 1>, "BT Out 1", 1, 18, true};
}

void StripEditorsTest::open(StripEditor *editor)
{
    m_editor.reset(editor);
    m_records.clear();
    connect(editor, &StripEditor::uiChanged, this, [this](const ChannelRecord &r) { m_records.append(r); });
    editor->show();
    QVERIFY(QTest::qWaitForWindowExposed(editor));
}

void StripEditorsTest::showsItsSection()
{
    QFETCH(Block, block);
    openBlock(block);
    QStringList labels;
    for (int channel = 0; channel <= lastChannel(); ++channel) {
        const StripProbe probe(*m_editor, channel);
        const bool odd = channel % 2 == 1;
        QVariantList expected{odd, -1.0 - 10 * channel, odd};
        if (block.gainParameter == 1)
            expected << -30 - channel;
        QCOMPARE(probe.shown(), expected);
        QCOMPARE(probe.strip.size(), QSize(92, 324));
        labels << child<QLabel>(probe.strip, "strip_label").text();
    }
    QCOMPARE(labels.join(QLatin1Char(',')), QLatin1String(block.labels));
    for (const char *hidden :
         {"block_label", "digital_invert_pushButton", "limiter_widget", "usb_host_widget"}) {
        for (const QWidget *widget : m_editor->findChildren<QWidget *>(QLatin1String(hidden)))
            QVERIFY2(widget->isHidden(), hidden);
    }
}

void StripEditorsTest::reportsEachChangeByHandOnce()
{
    QFETCH(Block, block);
    openBlock(block);
    const int channel = lastChannel();
    const bool odd = channel % 2 == 1;
    const StripProbe probe(*m_editor, channel);
    const bool input = block.gainParameter == 2;

    QTest::mouseClick(&probe.mute, Qt::LeftButton);
    QTest::keyClick(&probe.fader, Qt::Key_Up);
    child<QAbstractButton>(probe.strip, input ? "digital_invert_pushButton" : "limiter_en_checkBox").click();
    const QVector<ChannelRecord> expected{{channel, {0, !odd}},
                                          {channel, {block.gainParameter, -10.0 * channel}},
                                          {channel, {input ? 1 : 2, !odd}}};
    QCOMPARE(m_records, expected);

    m_editor->onDataChanged();
    QCOMPARE(probe.fader.Gain(), -1.0 - 10 * channel);
    // A record from a strip that is not the editor's own, and one from no strip at all.
    NetRxForm other(4, &m_section);
    connect(&StripProbe(other, 0).strip, &ChannelStrip::uiChanged, m_editor.get(), &StripEditor::onUiChanged);
    StripProbe(other, 0).mute.click();
    m_editor->onUiChanged({0, true});
    QCOMPARE(m_records, expected);
}

void StripEditorsTest::feedsMetersFromTheirOwnBytes()
{
    QFETCH(Block, block);
    openBlock(block);
    const int last = lastChannel();
    const StripProbe probe(*m_editor, last);
    const int lastByte = block.firstLevelByte + last;
    QByteArray datagram(19, '\x81');
    for (int channel = 0; channel <= last; ++channel)
        datagram[block.firstLevelByte + channel] = char(-10 * channel);

    m_editor->onLevels(datagram);
    for (int channel = 0; channel <= last; ++channel)
        QCOMPARE(StripProbe(*m_editor, channel).level(), -10.0 * channel);

    datagram[lastByte] = char(-128);
    for (int length : {0, 1, lastByte})
        m_editor->onLevels(datagram.left(length));
    QCOMPARE(probe.level(), -10.0 * last);
    m_editor->onLevels(datagram + QByteArray(65000, '\x7f'));
    QCOMPARE(probe.level(), -128.0);
}

void StripEditorsTest::disabledStripsStandStillUnderRed()
{
    QFETCH(Block, block);
    openBlock(block);
    const ChannelStrip &strip = StripProbe(*m_editor, 0).strip;
    const auto redness = [this, &strip] {
        const QColor pixel = m_editor->grab().toImage().pixelColor(strip.mapTo(m_editor.get(), QPoint(2, 2)));
        return pixel.red() - pixel.blue();
    };

    m_editor->onEnableStrip(0, false);
    m_section = QJsonDocument::fromJson(R"({"value":[{"gain":9}]})").object();
    m_editor->onDataChanged();
    m_editor->onLevels(QByteArray(19, char(-7)));
    QCOMPARE(StripProbe(*m_editor, 0).fader.Gain(), -1.0);
    QVERIFY(StripProbe(*m_editor, 0).level() != -7.0);
    QCOMPARE(redness() > 40, block.overlay);
    if (block.overlay)
        QCOMPARE(strip.findChild<Overlay *>()->geometry(), strip.rect());

    m_editor->onEnableStrip(0, true);
    m_editor->onEnableStrip(200, false);
    m_editor->onDataChanged();
    QCOMPARE(StripProbe(*m_editor, 0).fader.Gain(), 9.0);
    QVERIFY(redness() < 10);
    QVERIFY(m_records.isEmpty());
}

void StripEditorsTest::survivesOddSections_data()
{
    QTest::addColumn<QByteArray>("json");
    QTest::addColumn<QVariantList>("second"); // mute, gain, invert of channel 2, which showed true, -11, true
    const QVariantList untouched{true, -11.0, true};
    const QVariantList cleared{false, 0.0, false};
    QTest::newRow("no value") << QByteArray(R"({"result":"OK"})") << untouched;
    QTest::newRow("one channel") << QByteArray(R"({"value":[{"gain":3}]})") << untouched;
    QTest::newRow("no objects") << QByteArray(R"({"value":[1,"x",null,[]]})") << cleared;
    QTest::newRow("other types") << QByteArray(R"({"value":[{},{"mute":1,"gain":"-3","invert":"on"}]})")
                                 << cleared;
    QTest::newRow("too loud") << QByteArray(R"({"value":[{},{"gain":2000000}]})")
                              << QVariantList{false, 20.0, false};
}

void StripEditorsTest::survivesOddSections()
{
    QFETCH(QByteArray, json);
    open(new NetRxForm(4, &m_section));
    m_section = QJsonDocument::fromJson(json).object();
    m_editor->onDataChanged();
    QTEST(StripProbe(*m_editor, 1).shown(), "second");
    QVERIFY(m_records.isEmpty());
}

void StripEditorsTest::takesUsbChannelsAway_data()
{
    QTest::addColumn<int>("channel");
    QTest::addColumn<int>("type");
    QTest::addColumn<bool>("enabled"); // of the second strip, enabled before
    QTest::newRow("second taken") << 1 << 0 << false;
    QTest::newRow("low eight bits count") << 257 << 0 << false;
    QTest::newRow("no such channel") << 2 << 0 << true;
}

void StripEditorsTest::takesUsbChannelsAway()
{
    QFETCH(int, channel);
    QFETCH(int, type);
    QFETCH(bool, enabled);
    UsbInForm playback(2, &m_section);
    UsbOutForm record(2, &m_section);
    playback.onUsbMode(channel, type);
    record.onUsbMode(channel, type);
    const double gain = enabled ? -11.0 : 0.0;
    QCOMPARE(StripProbe(playback, 1).strip.isEnabled(), enabled);
    QCOMPARE(StripProbe(playback, 1).shown(), QVariantList({enabled, gain, enabled}));
    QCOMPARE(StripProbe(record, 1).strip.isEnabled(), enabled);
    QCOMPARE(StripProbe(record, 1).shown(), QVariantList({enabled, gain, true, -31}));

    record.onUsbMode(1, 1);
    QCOMPARE(StripProbe(record, 1).shown(), QVariantList({true, -11.0, true, -31}));
}

void StripEditorsTest::stepsTheThreshold_data()
{
    QTest::addColumn<int>("key"); // 0: wheel
    QTest::addColumn<int>("wheelDelta");
    QTest::addColumn<int>("start");
    QTest::addColumn<int>("expected");
    QTest::newRow("PageUp") << int(Qt::Key_PageUp) << 0 << 20 << 20;
    QTest::newRow("Down") << int(Qt::Key_Down) << 0 << -100 << -101;
    QTest::newRow("wheel up") << 0 << 120 << -10 << -9;
    QTest::newRow("wheel sideways") << 0 << 0 << -10 << -11;
}

void StripEditorsTest::stepsTheThreshold()
{
    QFETCH(int, key);
    QFETCH(int, wheelDelta);
    QFETCH(int, start);
    QFETCH(int, expected);
    open(new BtOutForm(1, &m_section));
    m_editor->onChanged({0, {3, start}});
    QSpinBox &box = child<QSpinBox>(*m_editor, "limiter_thresh_spinBox");
    QWheelEvent wheel(QPointF(), QPointF(), QPoint(), QPoint(120, wheelDelta), Qt::NoButton, Qt::NoModifier,
                      Qt::NoScrollPhase, false);

    if (key != 0)
        QTest::keyClick(&box, Qt::Key(key));
    else
        QCoreApplication::sendEvent(&box, &wheel);
    QCOMPARE(box.value(), expected);
    QCOMPARE(m_records, QVector<ChannelRecord>({{0, {3, expected}}}));
}

QTEST_MAIN(StripEditorsTest)
#include "tst_strip_editors.moc"
