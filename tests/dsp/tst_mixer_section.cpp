#include "dsp/level_datagram.h"
#include "dsp/mixer_section.h"

#include <QJsonDocument>
#include <QTest>

#include <limits>

/// The decisions that need no widget: rounding, writing the mixer's section, reading a level.
class MixerSectionTest : public QObject
{
    Q_OBJECT

private slots:
    void roundsHalvesUp_data();
    void roundsHalvesUp();
    void storesOneCrosspoint_data();
    void storesOneCrosspoint();
    void readsSignedLevels_data();
    void readsSignedLevels();
};

void MixerSectionTest::roundsHalvesUp_data()
{
    QTest::addColumn<double>("dB");
    QTest::addColumn<int>("expected");
    QTest::newRow("2.5") << 2.5 << 3;
    QTest::newRow("-2.5") << -2.5 << -2;
    QTest::newRow("2.49") << 2.49 << 2;
    QTest::newRow("-2.51") << -2.51 << -3;
    QTest::newRow("-0.5") << -0.5 << 0;
    QTest::newRow("-100") << -100.0 << -100;
    QTest::newRow("beyond int") << 1e300 << 1000000000;
    QTest::newRow("no number") << std::numeric_limits<double>::quiet_NaN() << -1000000000;
}

void MixerSectionTest::roundsHalvesUp()
{
    QFETCH(double, dB);
    QTEST(roundedLevel(dB), "expected");
}

void MixerSectionTest::storesOneCrosspoint_data()
{
    QTest::addColumn<QByteArray>("before");
    QTest::addColumn<int>("source");
    QTest::addColumn<int>("sink");
    QTest::addColumn<QByteArray>("after"); // empty: refused, nothing changed
    const QByteArray two = R"({"value":[[1,2],[3,4]]})";
    QTest::newRow("in place") << two << 1 << 0 << QByteArray(R"({"value":[[1,-9],[3,4]]})");
    QTest::newRow("missing source") << two << 3 << 1 << QByteArray(R"({"value":[[1,2],[3,4,0,-9]]})");
    QTest::newRow("missing sink") << two << 0 << 3 << QByteArray(R"({"value":[[1,2],[3,4],[],[-9]]})");
    QTest::newRow("no section") << QByteArray("{}") << 0 << 0 << QByteArray(R"({"value":[[-9]]})");
    QTest::newRow("sink is a number")
        << QByteArray(R"({"value":[5,[3]]})") << 1 << 0 << QByteArray(R"({"value":[[0,-9],[3]]})");
    QTest::newRow("value is a text, other members stay")
        << QByteArray(R"({"result":"OK","value":"x"})") << 0 << 0
        << QByteArray(R"({"result":"OK","value":[[-9]]})");
    QTest::newRow("source too high") << two << 10 << 0 << QByteArray();
    QTest::newRow("sink too high") << two << 0 << 7 << QByteArray();
    QTest::newRow("source negative") << two << -1 << 0 << QByteArray();
    QTest::newRow("sink negative") << two << 0 << -1 << QByteArray();
}

void MixerSectionTest::storesOneCrosspoint()
{
    QFETCH(QByteArray, before);
    QFETCH(int, source);
    QFETCH(int, sink);
    QFETCH(QByteArray, after);
    QJsonObject section = QJsonDocument::fromJson(before).object();
    QCOMPARE(storeCrosspoint(section, source, sink, -9), !after.isEmpty());
    QCOMPARE(QJsonDocument(section).toJson(QJsonDocument::Compact), after.isEmpty() ? before : after);
}

void MixerSectionTest::readsSignedLevels_data()
{
    QTest::addColumn<int>("first");
    QTest::addColumn<int>("strip");
    QTest::addColumn<int>("expected"); // 999: none
    QTest::newRow("0 dB") << 3 << 0 << 0;
    QTest::newRow("0xF6") << 3 << 1 << -10;
    QTest::newRow("0x9C") << 3 << 3 << -100;
    QTest::newRow("positive") << 3 << 4 << 20;
    QTest::newRow("just past the end") << 3 << 5 << 999;
    QTest::newRow("far past the end") << 18 << 0 << 999;
    QTest::newRow("before the start") << 0 << -1 << 999;
}

void MixerSectionTest::readsSignedLevels()
{
    QFETCH(int, first);
    QFETCH(int, strip);
    const QByteArray datagram = QByteArray::fromHex("810000"
                                                    "00f6ec9c"
                                                    "14");
    QTEST(stripLevel(datagram, first, strip).value_or(999), "expected");
}

QTEST_APPLESS_MAIN(MixerSectionTest)
#include "tst_mixer_section.moc"
