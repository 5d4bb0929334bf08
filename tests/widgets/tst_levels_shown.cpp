#include "widgets/level_taper.h"
#include "widgets/meter_ballistics.h"
#include "widgets/peak_readout.h"
#include "widgets/vm_dial.h"
#include "widgets/vm_dsp_gain.h"
#include "widgets/vm_led.h"
#include "widgets/vm_meter.h"

#include <QSignalSpy>
#include <QtTest>

#include <limits>

/// What fader, dial, meter and LED show of the values that they are given.
class TestLevelsShown : public QObject
{
    Q_OBJECT

private slots:
    void keepsWhatIsSetSilently_data();
    void keepsWhatIsSetSilently();
    void everyWholeDecibelHasItsOwnPlace();
    void movesLikeAMeter();
    void clickClearsPeakAndClipMark();
    void ledShowsItsState();
};

void TestLevelsShown::keepsWhatIsSetSilently_data()
{
    QTest::addColumn<double>("dB");
    QTest::addColumn<double>("kept");
    QTest::newRow("fraction") << -6.7 << -6.7;
    QTest::newRow("above the range") << 40.0 << 20.0;
    QTest::newRow("below the range") << -128.0 << -100.0;
    QTest::newRow("no number") << std::numeric_limits<double>::quiet_NaN() << -1.0;
}

void TestLevelsShown::keepsWhatIsSetSilently()
{
    QFETCH(double, dB);
    VmDspGain fader;
    VmDial dial;
    QSignalSpy faderChanges(&fader, &VmDspGain::parametersChanged);
    QSignalSpy dialChanges(&dial, &VmDial::parametersChanged);
    fader.setGain(-1.0);
    dial.setVal(-1.0);
    fader.setProperty("gain", dB);
    dial.setProperty("val", dB);
    QTEST(fader.Gain(), "kept");
    QTEST(dial.Val(), "kept");
    QCOMPARE(faderChanges.count() + dialChanges.count(), 0);
}

void TestLevelsShown::everyWholeDecibelHasItsOwnPlace()
{
    QCOMPARE(vm::travelShare(0.0), 0.67);
    QCOMPARE(vm::travelShare(0.0, 0.0), 1.0);
    for (int dB = -100; dB <= 20; ++dB) {
        QCOMPARE(vm::wholeLevel(vm::levelAtShare(vm::travelShare(dB))), double(dB));
        QVERIFY(dB == -100 || vm::travelShare(dB) > vm::travelShare(dB - 1));
    }
}

void TestLevelsShown::movesLikeAMeter()
{
    vm::MeterBallistics meter;
    meter.arrive(-10.0, 1000);
    QCOMPARE(meter.bar(), -10.0); // up at once
    meter.arrive(-60.0, 1200);
    meter.arrive(-60.0, 1500);
    QCOMPARE(meter.bar(), -13.54); // down by elapsed time
    meter.arrive(-60.0, 1900);
    meter.arrive(-60.0, 2300);
    meter.arrive(-60.0, 2499);
    QCOMPARE(meter.peak(), -10.0);
    meter.advance(2600);
    QCOMPARE(meter.peak(), -11.18); // held for one and a half seconds
    meter.advance(2999);
    QCOMPARE(meter.bar(), -100.0); // half a second without a level
    QVERIFY(!meter.isClipped());
    meter.arrive(0.0, 3000);
    QVERIFY(meter.isClipped()); // from 0 dB on
}

void TestLevelsShown::clickClearsPeakAndClipMark()
{
    VmDspGain fader;
    fader.resize(57, 260);
    fader.setGain(-12.0);
    fader.show();
    VMMeter *meter = fader.getMeter();
    const QImage empty = meter->grab().toImage();
    PeakReadout *readout = fader.peakReadout();
    for (QWidget *clicked : {static_cast<QWidget *>(meter), static_cast<QWidget *>(readout)}) {
        meter->setDbValuePort1(3.0);
        meter->setDbValuePort1(-90.0);
        QTRY_COMPARE(readout->text(), QStringLiteral("+3"));
        QVERIFY(meter->grab().toImage().pixel(6, 3) != empty.pixel(6, 3));
        QTest::mouseClick(clicked, Qt::LeftButton);
        QCOMPARE(readout->text(), QStringLiteral("–"));
        QVERIFY(!meter->isClipped());
    }
    QTest::mouseDClick(meter, Qt::LeftButton);
    QCOMPARE(fader.Gain(), -12.0);
}

void TestLevelsShown::ledShowsItsState()
{
    VmLED led;
    led.resize(led.sizeHint());
    led.setColor(QColor(255, 255, 0));
    const auto middle = [&led] { return led.grab().toImage().pixelColor(led.rect().center()); };
    led.setProperty("state", true);
    QVERIFY(qAbs(middle().hslHue() - led.color().hslHue()) < 5);
    led.setProperty("state", false);
    QCOMPARE(middle(), led.palette().color(QPalette::Window));
}

QTEST_MAIN(TestLevelsShown)
#include "tst_levels_shown.moc"
