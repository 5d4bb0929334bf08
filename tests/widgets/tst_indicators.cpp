#include "widgets/vm_dsp_gain.h"
#include "widgets/vm_led.h"
#include "widgets/vm_meter.h"

#include <QPaintEvent>
#include <QtTest>

namespace {

/// A meter that keeps the rectangles that it was asked to paint.
class WatchedMeter : public VMMeter
{
public:
    QVector<QRect> painted;

protected:
    void paintEvent(QPaintEvent *event) override
    {
        painted.append(event->rect());
        VMMeter::paintEvent(event);
    }
};

} // namespace

/// The widgets that only show: meter and LED.
class TestIndicators : public QObject
{
    Q_OBJECT

private slots:
    void meterShowsTheLevel_data();
    void meterShowsTheLevel();
    void meterPaintsOnlyWhatChanged();
    void clickClearsTheClipMarkOnly();
    void ledTellsItsStateWithoutColour();
};

void TestIndicators::meterShowsTheLevel_data()
{
    QTest::addColumn<double>("dB");
    QTest::addColumn<double>("highest");
    QTest::addColumn<int>("rows");
    QTest::newRow("nothing") << -100.0 << 20.0 << 0;
    QTest::newRow("quiet") << -40.0 << 20.0 << 24;
    QTest::newRow("unity") << 0.0 << 20.0 << 134;
    QTest::newRow("scale up to unity") << 0.0 << 0.0 << 200;
}

void TestIndicators::meterShowsTheLevel()
{
    QFETCH(double, dB);
    QFETCH(double, highest);
    QFETCH(int, rows);
    VMMeter meter;
    meter.setHighest(highest);
    meter.resize(12, 300);
    meter.resize(12, 500 - meter.travelRect().height()); // a travel of 200 rows
    meter.setDbValuePort1(dB);
    const QImage picture = meter.grab().toImage();
    const QRect travel = meter.travelRect();
    const auto isLit = [&](int row) { return picture.pixelColor(6, row).value() > 120; };
    for (const int above : {2, 23, 26, 69, 72, 133, 136, 199}) // none of them on a mark of the scale
        QVERIFY2(isLit(travel.bottom() + 1 - above) == (above <= rows),
                 qPrintable(QStringLiteral("row %1").arg(above)));
}

void TestIndicators::meterPaintsOnlyWhatChanged()
{
    WatchedMeter meter;
    meter.resize(12, 208);
    meter.show();
    QVERIFY(QTest::qWaitForWindowExposed(&meter));
    meter.setDbValuePort1(-30.0);
    QTRY_VERIFY(!meter.painted.isEmpty());
    QCoreApplication::processEvents();
    meter.painted.clear();
    meter.setDbValuePort1(-30.05); // less than a pixel
    meter.setDbValuePort1(-30.0);
    QCoreApplication::sendPostedEvents();
    QVERIFY(meter.painted.isEmpty());
    meter.setDbValuePort1(-29.0);
    QTRY_COMPARE(meter.painted.size(), 1);
    QVERIFY(meter.painted.first().height() < 10);
}

void TestIndicators::clickClearsTheClipMarkOnly()
{
    VmDspGain fader;
    fader.resize(57, 260);
    fader.setGain(-12.0);
    fader.show();
    VMMeter *meter = fader.getMeter();
    const QRgb dark = meter->grab().toImage().pixel(6, 3);
    meter->setDbValuePort1(0.0);
    meter->setDbValuePort1(-90.0);
    QVERIFY(meter->isClipped());
    QVERIFY(meter->grab().toImage().pixel(6, 3) != dark);
    QTest::mouseDClick(meter, Qt::LeftButton);
    QVERIFY(!meter->isClipped());
    QCOMPARE(meter->grab().toImage().pixel(6, 3), dark);
    QCOMPARE(fader.Gain(), -12.0);
}

void TestIndicators::ledTellsItsStateWithoutColour()
{
    VmLED led;
    led.resize(led.sizeHint());
    const auto middle = [&led] { return led.grab().toImage().pixelColor(led.rect().center()); };
    const QColor hollow = led.palette().color(QPalette::Window);
    for (const QColor &color : {led.color(), QColor(0, 255, 0), QColor(255, 255, 0)}) {
        led.setColor(color);
        led.setProperty("state", true);
        QCOMPARE(led.accessibleDescription(), QStringLiteral("on"));
        QVERIFY(qAbs(middle().hslHue() - color.hslHue()) < 5);
        led.setProperty("state", false);
        QCOMPARE(led.accessibleDescription(), QStringLiteral("off"));
        QCOMPARE(middle(), hollow);
    }
}

QTEST_MAIN(TestIndicators)
#include "tst_indicators.moc"
