#include "dsp/channel_strips.h"
#include "dsp/overlay.h"
#include "tests/dsp/block_cases.h"
#include "tests/dsp/strip_probe.h"

#include <QTest>
#include <QWheelEvent>

/// What a single strip does: the threshold's steps, and the cover of a strip that is not available.
class StripsTest : public QObject
{
    Q_OBJECT

private slots:
    void stepsTheThreshold_data();
    void stepsTheThreshold();
    void leavesTypingToTheThreshold();
    void emitsNothingThatItIsToldToShow();
    void coversWhatIsNotAvailable_data();
    void coversWhatIsNotAvailable();
    void coverFollowsItsWidget();
};

void StripsTest::stepsTheThreshold_data()
{
    QTest::addColumn<int>("key"); // 0: wheel
    QTest::addColumn<int>("wheelDelta");
    QTest::addColumn<int>("start");
    QTest::addColumn<int>("expected");
    QTest::newRow("Up") << int(Qt::Key_Up) << 0 << -10 << -9;
    QTest::newRow("PageUp") << int(Qt::Key_PageUp) << 0 << -10 << -9;
    QTest::newRow("Down") << int(Qt::Key_Down) << 0 << -10 << -11;
    QTest::newRow("PageDown") << int(Qt::Key_PageDown) << 0 << -10 << -11;
    QTest::newRow("wheel up") << 0 << 120 << -10 << -9;
    QTest::newRow("wheel down") << 0 << -120 << -10 << -11;
    QTest::newRow("wheel sideways") << 0 << 0 << -10 << -11;
    QTest::newRow("upper end") << int(Qt::Key_Up) << 0 << 20 << 20;
    QTest::newRow("lower end") << int(Qt::Key_Down) << 0 << -101 << -101;
}

void StripsTest::stepsTheThreshold()
{
    QFETCH(int, key);
    QFETCH(int, wheelDelta);
    QFETCH(int, start);
    QFETCH(int, expected);
    UsbOutChStrip strip;
    strip.onChanged({3, start});
    QSpinBox &box = child<QSpinBox>(strip, "limiter_thresh_spinBox");
    QVector<StripRecord> records;
    connect(&strip, &ChannelStrip::uiChanged, this, [&records](const StripRecord &r) { records.append(r); });

    if (key != 0) {
        QTest::keyClick(&box, Qt::Key(key));
    } else {
        QWheelEvent wheel(QPointF(5, 5), QPointF(5, 5), QPoint(),
                          QPoint(wheelDelta == 0 ? 120 : 0, wheelDelta), Qt::NoButton, Qt::NoModifier,
                          Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(&box, &wheel);
        QVERIFY(wheel.isAccepted());
    }
    QCOMPARE(box.value(), expected);
    QCOMPARE(records, QVector<StripRecord>({{3, expected}}));
}

void StripsTest::leavesTypingToTheThreshold()
{
    BtOutChStrip strip;
    QSpinBox &box = child<QSpinBox>(strip, "limiter_thresh_spinBox");
    QVector<StripRecord> records;
    connect(&strip, &ChannelStrip::uiChanged, this, [&records](const StripRecord &r) { records.append(r); });

    box.selectAll();
    QTest::keyClicks(&box, QStringLiteral("-42"));
    QVERIFY(records.isEmpty());
    QTest::keyClick(&box, Qt::Key_Return);
    QCOMPARE(records, QVector<StripRecord>({{3, -42}}));
}

void StripsTest::emitsNothingThatItIsToldToShow()
{
    NetRxChStrip input;
    NetTxChStrip output;
    int emitted = 0;
    for (ChannelStrip *strip : {static_cast<ChannelStrip *>(&input), static_cast<ChannelStrip *>(&output)}) {
        connect(strip, &ChannelStrip::uiChanged, this, [&emitted] { ++emitted; });
        for (int parameter = -1; parameter < 5; ++parameter)
            strip->onChanged({parameter, 1});
        strip->onLevelChange(-3);
        QVERIFY(!strip->signalsBlocked());
    }
    QCOMPARE(emitted, 0);
    QCOMPARE(child<VmDspGain>(input, "vmdspgain").Gain(), 1.0);
    QVERIFY(child<QCheckBox>(output, "limiter_en_checkBox").isChecked());

    output.onUiChanged({1, -6.7});
    QCOMPARE(emitted, 1);
    QCOMPARE(child<VmDspGain>(output, "vmdspgain").Gain(), -6.7);
}

void StripsTest::coversWhatIsNotAvailable_data()
{
    QTest::addColumn<BlockCase>("block");
    for (const BlockCase &block : blockCases())
        QTest::newRow(block.name) << block;
}

void StripsTest::coversWhatIsNotAvailable()
{
    QFETCH(BlockCase, block);
    const QJsonObject section = sectionOf(block.channels());
    const auto editor = block.open(section);
    editor->show();
    QVERIFY(QTest::qWaitForWindowExposed(editor.get()));
    const ChannelStrip &strip = StripProbe(*editor, 0).strip();
    const auto redness = [&editor, &strip] {
        const QColor pixel = editor->grab().toImage().pixelColor(strip.mapTo(editor.get(), QPoint(2, 2)));
        return pixel.red() - pixel.blue();
    };
    const auto cover = [&editor] { return editor->findChild<Overlay *>(); };
    QVERIFY(!cover());

    editor->onEnableStrip(0, false);
    QTRY_COMPARE(cover() != nullptr, block.overlay);
    QCOMPARE(redness() > 40, block.overlay);
    if (block.overlay) {
        QCOMPARE(cover()->parentWidget(), &strip);
        QCOMPARE(cover()->geometry(), strip.rect());
    }

    editor->onEnableStrip(0, true);
    QTRY_VERIFY(!cover() || cover()->isHidden());
    QVERIFY(redness() < 10);
}

void StripsTest::coverFollowsItsWidget()
{
    QWidget watched;
    OverlayFactoryFilter filter(OverlayFactoryFilter::unavailableColor());
    watched.installEventFilter(&filter);
    watched.resize(80, 80);
    watched.setEnabled(false);
    watched.show();
    QTRY_VERIFY(watched.findChild<Overlay *>());

    watched.resize(120, 60);
    QTRY_COMPARE(watched.findChild<Overlay *>()->size(), watched.size());

    delete watched.findChild<Overlay *>();
    watched.update();
    QTRY_VERIFY(watched.findChild<Overlay *>());
    QCOMPARE(watched.findChild<Overlay *>()->size(), watched.size());
}

QTEST_MAIN(StripsTest)
#include "tst_strips.moc"
