#include "widgets/level_taper.h"
#include "widgets/meter_ballistics.h"

#include <QtTest>

namespace {

/// At `at` ms the level `dB` arrives, or, without a level, time has passed.
struct Moment
{
    qint64 at;
    double dB;
};

constexpr double nothing = 999.0;

} // namespace

Q_DECLARE_METATYPE(QVector<Moment>)

/// The scale that fader and meter share, and how a meter moves on it.
class TestLevelScale : public QObject
{
    Q_OBJECT

private slots:
    void standsAtItsShareOfTheTravel_data();
    void standsAtItsShareOfTheTravel();
    void everyWholeDecibelHasItsOwnPlace();
    void movesLikeAMeter_data();
    void movesLikeAMeter();
};

void TestLevelScale::standsAtItsShareOfTheTravel_data()
{
    QTest::addColumn<double>("dB");
    QTest::addColumn<double>("highest");
    QTest::addColumn<double>("share");
    QTest::newRow("bottom") << -100.0 << 20.0 << 0.0;
    QTest::newRow("between two knees") << -35.0 << 20.0 << 0.17;
    QTest::newRow("programme") << -20.0 << 20.0 << 0.35;
    QTest::newRow("unity") << 0.0 << 20.0 << 0.67;
    QTest::newRow("top") << 20.0 << 20.0 << 1.0;
    QTest::newRow("scale that ends at unity") << 0.0 << 0.0 << 1.0;
    QTest::newRow("half of a scale that ends at unity") << -20.0 << 0.0 << 0.35 / 0.67;
    QTest::newRow("scale that ends very low") << -100.0 << -80.0 << 0.0;
}

void TestLevelScale::standsAtItsShareOfTheTravel()
{
    QFETCH(double, dB);
    QFETCH(double, highest);
    QFETCH(double, share);
    QVERIFY(qAbs(vm::travelShare(dB, highest) - share) < 1e-9);
    QVERIFY(qAbs(vm::levelAtShare(share, highest) - qBound(-100.0, dB, highest)) < 1e-9);
}

void TestLevelScale::everyWholeDecibelHasItsOwnPlace()
{
    for (int dB = -100; dB <= 20; ++dB) {
        QCOMPARE(vm::wholeLevel(vm::levelAtShare(vm::travelShare(dB))), double(dB));
        QVERIFY(dB == -100 || vm::travelShare(dB) > vm::travelShare(dB - 1));
    }
}

void TestLevelScale::movesLikeAMeter_data()
{
    QTest::addColumn<QVector<Moment>>("moments");
    QTest::addColumn<double>("bar");
    QTest::addColumn<double>("peak");
    const auto row = [](const char *name, const QVector<Moment> &moments, double bar, double peak) {
        QTest::newRow(name) << moments << bar << peak;
    };
    const QVector<Moment> kept{{1000, -10.0}, {1400, -12.0}, {1800, -12.0}, {2200, -12.0}, {2500, -12.0}};
    row("jumps up at once", {{1000, -40.0}, {1001, -6.0}}, -6.0, -6.0);
    row("falls by elapsed time", {{1000, 0.0}, {1200, -60.0}, {1400, nothing}}, -2.36, 0.0);
    row("holds the peak", kept, -12.0, -10.0);
    row("lets the peak go after its time", kept + QVector<Moment>{{2600, nothing}}, -12.0, -11.18);
    row("a released peak rests on the bar", kept + QVector<Moment>{{2900, nothing}}, -12.0, -12.0);
    row("an equal level holds it again",
        {{1000, -9.0}, {1400, -9.0}, {1800, -30.0}, {2200, -30.0}, {2600, -30.0}, {2899, nothing}}, -21.9682,
        -9.0);
    row("stays until half a second is over", {{1000, -10.0}, {1499, nothing}}, -10.0, -10.0);
    row("is empty after half a second", {{1000, -10.0}, {1500, nothing}}, -100.0, -100.0);
    row("below the scale", {{1000, -128.0}}, -100.0, -100.0);
}

void TestLevelScale::movesLikeAMeter()
{
    QFETCH(QVector<Moment>, moments);
    QFETCH(double, bar);
    QFETCH(double, peak);
    vm::MeterBallistics meter;
    for (const Moment &moment : qAsConst(moments)) {
        if (moment.dB == nothing)
            meter.advance(moment.at);
        else
            meter.arrive(moment.dB, moment.at);
    }
    QVERIFY2(qAbs(meter.bar() - bar) < 1e-6, qPrintable(QString::number(meter.bar())));
    QVERIFY2(qAbs(meter.peak() - peak) < 1e-6, qPrintable(QString::number(meter.peak())));
    QCOMPARE(meter.isMoving(), bar > -100.0);
}

QTEST_APPLESS_MAIN(TestLevelScale)
#include "tst_level_scale.moc"
