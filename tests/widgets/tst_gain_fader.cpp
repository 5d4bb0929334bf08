#include "widgets/vm_dial.h"
#include "widgets/vm_dsp_gain.h"
#include "widgets/vm_meter.h"

#include <QDoubleSpinBox>
#include <QLineEdit>
#include <QSignalSpy>
#include <QtTest>

#include <limits>

/// What an owner configures, sets and reads on a fader, and that it stays readable.
class TestGainFader : public QObject
{
    Q_OBJECT

private slots:
    void keepsWhatIsSetSilently_data();
    void keepsWhatIsSetSilently();
    void rangeFollowsTheProperty_data();
    void rangeFollowsTheProperty();
    void isReadableAtItsSmallest();
};

void TestGainFader::keepsWhatIsSetSilently_data()
{
    QTest::addColumn<double>("dB");
    QTest::addColumn<double>("kept");
    QTest::addColumn<QString>("shown");
    QTest::newRow("fraction above zero") << 5.9 << 5.9 << "6";
    QTest::newRow("fraction below zero") << -6.7 << -6.7 << "-7";
    QTest::newRow("no negative zero") << -0.4 << -0.4 << "0";
    QTest::newRow("above the range") << 40.0 << 20.0 << "20";
    QTest::newRow("below the range") << -128.0 << -100.0 << "-100";
    QTest::newRow("no number") << std::numeric_limits<double>::quiet_NaN() << -1.0 << "-1";
}

void TestGainFader::keepsWhatIsSetSilently()
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
    QTEST(dial.property("val").toDouble(), "kept");
    QTEST(fader.numericEntry()->text(), "shown");
    QCOMPARE(faderChanges.count() + dialChanges.count(), 0);
}

void TestGainFader::rangeFollowsTheProperty_data()
{
    QTest::addColumn<QVariant>("maxgain");
    QTest::addColumn<double>("highest");
    QTest::newRow("as at first") << QVariant(20) << 20.0;
    QTest::newRow("below zero") << QVariant(-20) << -20.0;
    QTest::newRow("higher") << QVariant(30.0) << 30.0;
    QTest::newRow("nothing above the lowest") << QVariant(-100) << 20.0;
    QTest::newRow("no number") << QVariant(QStringLiteral("loud")) << 20.0;
}

void TestGainFader::rangeFollowsTheProperty()
{
    QFETCH(QVariant, maxgain);
    QFETCH(double, highest);
    VmDspGain fader;
    fader.setProperty("maxgain", 10);
    fader.setGain(10.0);
    QSignalSpy changes(&fader, &VmDspGain::parametersChanged);
    fader.setProperty("maxgain", maxgain);
    QCOMPARE(fader.highest(), highest);
    QCOMPARE(fader.numericEntry()->maximum(), highest);
    QCOMPARE(fader.getMeter()->highest(), highest);
    QCOMPARE(fader.Gain(), qMin(10.0, highest));
    QCOMPARE(fader.numericEntry()->value(), qMin(10.0, highest));
    QCOMPARE(changes.count(), 0);
    fader.setGain(1000.0);
    QCOMPARE(fader.Gain(), highest);
}

void TestGainFader::isReadableAtItsSmallest()
{
    VmDspGain fader;
    fader.setStyleSheet(QStringLiteral("QAbstractSpinBox { border: 1px solid #555; padding: 2px 4px; }"));
    fader.setFixedSize(57, 150);
    fader.setGain(-100.0);
    fader.show();
    QVERIFY(QTest::qWaitForWindowExposed(&fader));
    const auto *text = fader.numericEntry()->findChild<QLineEdit *>();
    QVERIFY(text->fontMetrics().horizontalAdvance(QStringLiteral("-100")) <= text->width() - 4);
    QVERIFY(text->height() >= text->fontMetrics().ascent());
    QVERIFY(fader.travelRect().height() >= 80);
    const QRect meter = fader.getMeter()->travelRect().translated(fader.getMeter()->pos());
    QCOMPARE(meter.top(), fader.travelRect().top());
    QCOMPARE(meter.bottom(), fader.travelRect().bottom());
    QVERIFY(fader.numericEntry()->geometry().top() > meter.bottom());
}

QTEST_MAIN(TestGainFader)
#include "tst_gain_fader.moc"
