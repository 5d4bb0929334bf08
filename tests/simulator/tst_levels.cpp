#include "simulator/device_model.h"

#include <QTest>

using namespace sim;

Q_DECLARE_METATYPE(sim::Desk)
Q_DECLARE_METATYPE(sim::SourceLevels)

namespace {

/// All strips at 0 dB, all crosspoints off.
Desk quietDesk()
{
    Desk desk;
    for (auto &row : desk.mixer)
        row.fill(SilenceDb);
    return desk;
}

SourceLevels silentSources()
{
    SourceLevels sources;
    sources.fill(SilenceDb);
    return sources;
}

} // namespace

/// How levels follow from the sources and the settings.
class LevelsTest : public QObject
{
    Q_OBJECT

private slots:
    void compute_data();
    void compute();
    void datagram();
    void modelFollowsSettings_data();
    void modelFollowsSettings();
};

void LevelsTest::compute_data()
{
    QTest::addColumn<Desk>("desk");
    QTest::addColumn<SourceLevels>("sources");
    QTest::addColumn<int>("input");
    QTest::addColumn<double>("inputLevel");
    QTest::addColumn<int>("output");
    QTest::addColumn<double>("outputLevel");

    SourceLevels sources = silentSources();
    sources[0] = -20;
    sources[1] = -20;
    sources[9] = -40;
    Desk desk = quietDesk();
    QTest::newRow("all crosspoints off") << desk << sources << 0 << -20.0 << 0 << SilenceDb;
    desk.mixer[2][0] = desk.mixer[2][1] = -6;
    QTest::newRow("equal powers add 3 dB") << desk << sources << 1 << -20.0 << 2 << -22.99;
    desk.inputs[1].mute = true;
    QTest::newRow("input mute") << desk << sources << 1 << SilenceDb << 2 << -26.0;
    desk.inputs[0].gain = 10;
    QTest::newRow("input gain") << desk << sources << 0 << -10.0 << 2 << -16.0;
    desk.outputs[2].gain = 4;
    desk.outputs[2].limited = true;
    desk.outputs[2].threshold = -30;
    QTest::newRow("limiter") << desk << sources << 0 << -10.0 << 2 << -30.0;
    desk.outputs[2].mute = true;
    QTest::newRow("output mute") << desk << sources << 0 << -10.0 << 2 << SilenceDb;

    desk = quietDesk();
    desk.mixer[6][9] = 20;
    desk.inputs[0].gain = 20;
    sources[0] = 15;
    QTest::newRow("tone generator and the ceiling") << desk << sources << 0 << FullDb << 6 << -20.0;
    desk.mixer[6][9] = -99;
    desk.inputs[3].gain = 20;
    desk.mixer[6][3] = 20;
    QTest::newRow("silence is not amplified") << desk << sources << 3 << SilenceDb << 6 << SilenceDb;
}

void LevelsTest::compute()
{
    QFETCH(Desk, desk);
    QFETCH(SourceLevels, sources);
    QFETCH(int, input);
    QFETCH(double, inputLevel);
    QFETCH(int, output);
    QFETCH(double, outputLevel);
    const Levels levels = computeLevels(desk, sources);
    QVERIFY2(qAbs(levels.inputs[size_t(input)] - inputLevel) < 0.01,
             QByteArray::number(levels.inputs[size_t(input)]));
    QVERIFY2(qAbs(levels.outputs[size_t(output)] - outputLevel) < 0.01,
             QByteArray::number(levels.outputs[size_t(output)]));
}

void LevelsTest::datagram()
{
    Levels levels{{0, -10, -20, -100, -1, -2, -3, -4, -5, -99}, {-11.4, -11.6, -13, -14, -15, -16, 20}};
    QCOMPARE(levelDatagram(levels).toHex(' '),
             QByteArray("81 00 00 00 f6 ec 9c ff fe fd fc fb f5 f4 f3 f2 f1 f0 14"));
}

/// From a set request to the byte that a meter reads.
void LevelsTest::modelFollowsSettings_data()
{
    QTest::addColumn<QByteArrayList>("requests");
    QTest::addColumn<int>("byte");
    QTest::addColumn<int>("level");
    const QByteArray tone = R"({"set":"/system/function_gen","value":{"enable":true,"amplitude":-30}})";
    const QByteArray row = R"({"set":"/preset/dsp/mixer/1",)"
                           R"("value":[-100,-100,-100,-100,-100,-100,-100,-100,-100,-4]})";
    const QByteArray gain = R"({"set":"/preset/dsp/dante_tx/1/gain", "value":9})";
    QTest::newRow("tone, mixer and output gain") << QByteArrayList{tone, row, gain} << 13 << -25;
    QTest::newRow("tone off") << QByteArrayList{row, gain} << 13 << -100;
    QTest::newRow("speakerphone is mono")
        << QByteArrayList{R"({"set":"/system/usb/mode","value":"speakerphone_ec"})"} << 8 << -100;
    QTest::newRow("no phone, no Bluetooth audio") << QByteArrayList{} << 9 << -100;
}

void LevelsTest::modelFollowsSettings()
{
    QFETCH(QByteArrayList, requests);
    QFETCH(int, byte);
    QFETCH(int, level);
    DeviceModel model(Identity(QStringLiteral("KBX-0001")), 1);
    for (const QByteArray &request : qAsConst(requests))
        QVERIFY2(model.answer(request).contains("\"OK\""), request);
    QCOMPARE(int(qint8(levelDatagram(model.levels()).at(byte))), level);
}

QTEST_GUILESS_MAIN(LevelsTest)
#include "tst_levels.moc"
