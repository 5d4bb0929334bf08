#include "dsp/channel_strip.h"
#include "dsp/overlay.h"
#include "dsp/strip_editors.h"
#include "widgets/vm_dsp_gain.h"
#include "widgets/vm_meter.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QLabel>
#include <QPushButton>
#include <QTest>

namespace {

/// Finds a child that has to be there.
template <typename Widget>
Widget &child(const QObject &parent, const char *name)
{
    auto *widget = parent.findChild<Widget *>(QLatin1String(name));
    if (!widget)
        qFatal("no child \"%s\"", name);
    return *widget;
}

/// Looks at the strip of one channel as a user would: by the widgets on it.
struct StripProbe
{
    StripProbe(const StripEditor &editor, int channel)
        : strip(*editor.findChildren<ChannelStrip *>().at(channel))
        , fader(child<VmDspGain>(strip, "vmdspgain"))
        , mute(child<QPushButton>(strip, "digital_mute_pushButton"))
    {
    }

    double level() const { return fader.getMeter()->dbValuePort1(); }
    /// Mute and gain.
    QVariantList shown() const { return {mute.isChecked(), fader.Gain()}; }

    ChannelStrip &strip;
    VmDspGain &fader;
    QPushButton &mute;
};

/// A section with four channels; muted are the odd ones, gains are -1, -11, -21 and -31 dB.
const char Section[] = R"({"value":[{"mute":false,"gain":-1},{"mute":true,"gain":-11},
                                    {"mute":false,"gain":-21},{"mute":true,"gain":-31}]})";

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
    void showsItsSectionAndReportsTheHand_data() { addBlocks(); }
    void showsItsSectionAndReportsTheHand();
    void feedsMetersFromTheirOwnBytes_data() { addBlocks(); }
    void feedsMetersFromTheirOwnBytes();
    void disabledStripsStandStillUnderRed_data() { addBlocks(); }
    void disabledStripsStandStillUnderRed();
    void survivesOddSections_data();
    void survivesOddSections();

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
    m_section = QJsonDocument::fromJson(Section).object();
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

void StripEditorsTest::showsItsSectionAndReportsTheHand()
{
    QFETCH(Block, block);
    openBlock(block);
    QStringList labels;
    for (int channel = 0; channel <= lastChannel(); ++channel) {
        const StripProbe probe(*m_editor, channel);
        const bool odd = channel % 2 == 1;
        const QVariantList shown{odd, -1.0 - 10 * channel};
        QCOMPARE(probe.shown(), shown);
        labels << child<QLabel>(probe.strip, "strip_label").text();

        m_records.clear();
        QTest::mouseClick(&probe.mute, Qt::LeftButton);
        QTest::keyClick(&probe.fader, Qt::Key_Up);
        const QVector<ChannelRecord> reported{{channel, {0, !odd}},
                                              {channel, {block.gainParameter, -10.0 * channel}}};
        QCOMPARE(m_records, reported);
        m_editor->onDataChanged();
        QCOMPARE(probe.shown(), shown);
        QCOMPARE(m_records, reported);
    }
    QCOMPARE(labels.join(QLatin1Char(',')), QLatin1String(block.labels));
    for (const char *hidden :
         {"block_label", "digital_invert_pushButton", "limiter_widget", "usb_host_widget"}) {
        for (const QWidget *widget : m_editor->findChildren<QWidget *>(QLatin1String(hidden)))
            QVERIFY2(widget->isHidden(), hidden);
    }
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
    const StripProbe probe(*m_editor, 0);
    const auto isCovered = [&probe] {
        const auto *overlay = probe.strip.findChild<Overlay *>();
        return overlay && overlay->isVisible();
    };
    m_editor->onEnableStrip(0, false);
    m_section = QJsonDocument::fromJson(R"({"value":[{"gain":9}]})").object();
    m_editor->onDataChanged();
    m_editor->onLevels(QByteArray(19, char(-7)));
    QCOMPARE(probe.fader.Gain(), -1.0);
    QVERIFY(probe.level() != -7.0);
    QTRY_COMPARE(isCovered(), block.overlay);

    m_editor->onEnableStrip(0, true);
    m_editor->onEnableStrip(200, false);
    m_editor->onDataChanged();
    QCOMPARE(probe.fader.Gain(), 9.0);
    QTRY_VERIFY(!isCovered());
    QVERIFY(m_records.isEmpty());
}

void StripEditorsTest::survivesOddSections_data()
{
    QTest::addColumn<QByteArray>("json");
    QTest::addColumn<QVariantList>("second"); // mute and gain of channel 2, which showed true, -11
    const QVariantList untouched{true, -11.0};
    const QVariantList cleared{false, 0.0};
    QTest::newRow("no value") << QByteArray(R"({"result":"OK"})") << untouched;
    QTest::newRow("one channel") << QByteArray(R"({"value":[{"gain":3}]})") << untouched;
    QTest::newRow("no objects") << QByteArray(R"({"value":[1,"x",null,[]]})") << cleared;
    QTest::newRow("other types") << QByteArray(R"({"value":[{},{"mute":1,"gain":"-3","invert":"on"}]})")
                                 << cleared;
    QTest::newRow("too loud") << QByteArray(R"({"value":[{},{"gain":2000000}]})")
                              << QVariantList{false, 20.0};
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

QTEST_MAIN(StripEditorsTest)
#include "tst_strip_editors.moc"
