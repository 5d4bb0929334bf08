#include "tests/dsp/mixer_probe.h"

#include <QTest>

/// The tone generator's header: what the device says is shown silently, what the hand does is reported,
/// frequency and level after a rest.
class ToneGeneratorTest : public QObject
{
    Q_OBJECT

private slots:
    void showsTheDevicesValues();
    void reportsEnableAtOnce();
    void reportsARestedNumberOnce_data();
    void reportsARestedNumberOnce();
    void numbersRestApart();
    void restsHalfASecond();
};

void ToneGeneratorTest::showsTheDevicesValues()
{
    MixerProbe probe;
    probe.tone().setRestTime(0);
    probe.form.onToneGenChanged({100, true});
    probe.form.onToneGenChanged({101, 1000});
    probe.form.onToneGenChanged({102, -12});
    probe.form.onToneGenChanged({103, 7});
    QVERIFY(probe.toneEnable().isChecked());
    QCOMPARE(probe.toneFrequency().value(), 1000);
    QCOMPARE(probe.toneFrequency().text(), QStringLiteral("1000 Hz"));
    QCOMPARE(probe.toneLevel().text(), QStringLiteral("-12 dB"));

    probe.form.onToneGenChanged({101, 1});
    probe.form.onToneGenChanged({102, 7});
    QCOMPARE(probe.toneFrequency().value(), 10);
    QCOMPARE(probe.toneLevel().value(), 0);

    bool later = false; // a rest of 0 ms would be over by then
    QTimer::singleShot(5, this, [&later] { later = true; });
    QTRY_VERIFY(later);
    QVERIFY(probe.toneChanges.isEmpty());
}

void ToneGeneratorTest::reportsEnableAtOnce()
{
    MixerProbe probe;
    probe.form.show();
    QTest::mouseClick(&probe.toneEnable(), Qt::LeftButton, {}, QPoint(6, probe.toneEnable().height() / 2));
    QCOMPARE(probe.toneChanges, QVector<ToneRecord>({{100, true}}));
}

void ToneGeneratorTest::reportsARestedNumberOnce_data()
{
    QTest::addColumn<bool>("frequency");
    QTest::addColumn<QString>("typed");
    QTest::addColumn<ToneRecord>("expected");
    QTest::newRow("frequency") << true << QStringLiteral("1500") << ToneRecord(101, 1500);
    QTest::newRow("level") << false << QStringLiteral("-42") << ToneRecord(102, -42);
}

void ToneGeneratorTest::reportsARestedNumberOnce()
{
    QFETCH(bool, frequency);
    QFETCH(QString, typed);
    QFETCH(ToneRecord, expected);
    MixerProbe probe;
    probe.tone().setRestTime(40);
    QSpinBox &box = frequency ? probe.toneFrequency() : probe.toneLevel();

    box.selectAll();
    QTest::keyClicks(&box, typed);
    QVERIFY(probe.toneChanges.isEmpty());
    QTRY_COMPARE(probe.toneChanges, QVector<ToneRecord>({expected}));

    // The rest is over for good, not periodic.
    bool later = false;
    QTimer::singleShot(120, this, [&later] { later = true; });
    QTRY_VERIFY(later);
    QCOMPARE(probe.toneChanges.size(), 1);
}

void ToneGeneratorTest::numbersRestApart()
{
    MixerProbe probe;
    probe.tone().setRestTime(20);
    probe.toneFrequency().setValue(440);
    probe.toneLevel().setValue(-3);
    QTRY_COMPARE(probe.toneChanges, QVector<ToneRecord>({{101, 440}, {102, -3}}));
}

void ToneGeneratorTest::restsHalfASecond()
{
    MixerProbe probe;
    QElapsedTimer rested;
    probe.toneFrequency().setValue(440);
    rested.start();
    QTRY_COMPARE(probe.toneChanges.size(), 1);
    QVERIFY2(rested.elapsed() >= 470, qPrintable(QString::number(rested.elapsed())));
}

QTEST_MAIN(ToneGeneratorTest)
#include "tst_tone_generator.moc"
