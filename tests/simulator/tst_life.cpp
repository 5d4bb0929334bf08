#include "simulator/simulator.h"
#include "simulator/state_file.h"
#include "tests/simulator/client.h"
#include "tests/support/tftp_peer.h"

#include <QDir>
#include <QFile>
#include <QJsonDocument>
#include <QProcess>
#include <QSignalSpy>
#include <QTemporaryDir>

#include <algorithm>

using namespace sim;
using support::ask;
using support::deviceAddress;
using support::Receiver;

namespace {

Options optionsOf(const QString &stateFile = {})
{
    Options options;
    options.address = deviceAddress();
    options.port = 0;
    options.stateFile = stateFile;
    return options;
}

Intervals quick()
{
    Intervals intervals;
    intervals.announce = 20;
    intervals.life = intervals.meter = 10;
    intervals.shutDown = 1000;
    intervals.reboot = 300;
    intervals.meterFor = 60000;
    intervals.save = 10;
    intervals.tftpRequest = 20;
    intervals.tftpRepeats = 3;
    return intervals;
}

QJsonValue valueOf(const Simulator &simulator, const char *path)
{
    const QByteArray reply = ask(simulator.port(), QByteArray("{\"get\":\"") + path + "\"}");
    return QJsonDocument::fromJson(reply).object().value(QStringLiteral("value"));
}

bool isUp(const Simulator &simulator)
{
    return !ask(simulator.port(), "QUERY\r").isEmpty();
}

bool isSilent(const Simulator &simulator)
{
    return ask(simulator.port(), "QUERY\r", support::SilenceMs).isEmpty();
}

/// Whether the order was taken.
bool order(Simulator *simulator, const char *path, const char *value)
{
    const QByteArray line = QByteArray(R"({"set":")") + path + R"(","value":)" + value + '}';
    return simulator->orders()->answer(line).contains("\"OK\"");
}

} // namespace

/// The device on the network: how it appears, goes, comes back, and what it remembers.
class LifeTest : public QObject
{
    Q_OBJECT

private slots:
    void reboot();
    void followsOrders();
    void vanishesAndReturns();
    void refusedOrder_data();
    void refusedOrder();
    void stateFile();
    void damagedStateFile_data();
    void damagedStateFile();
    void voiceCue_data();
    void voiceCue();
    void program();
    void outlivesItsReader();
};

void LifeTest::reboot()
{
    Simulator simulator(optionsOf(), quick());
    QCOMPARE(simulator.start(), QString());
    ask(simulator.port(), R"({"set":"/preset/dsp/dante_rx/0/gain", "value":5})");
    ask(simulator.port(), R"({"set":"/control/save_preset", "value":"6"})");
    QVERIFY(ask(simulator.port(), R"({"set":"/control/reboot", "value":true})").contains("\"OK\""));

    QVERIFY(isUp(simulator)); // for whoever takes leave of it
    QVERIFY(QTest::qWaitFor([&] { return isSilent(simulator); }));
    QTRY_VERIFY(!isSilent(simulator));

    QCOMPARE(valueOf(simulator, "/preset/dsp/dante_rx/0/gain").toInt(), 5);
    QCOMPARE(ask(simulator.port(), "LOAD 6\r"), QByteArray("ACK LOAD 6\r"));
}

/// Orders hold in the running device, which tells what comes about by itself.
void LifeTest::followsOrders()
{
    Simulator simulator(optionsOf(), quick());
    QCOMPARE(simulator.start(), QString());
    QSignalSpy said(simulator.orders(), &Orders::said);
    QVERIFY(order(&simulator, "/faults/refuse", R"("set:/control/i*")"));
    QVERIFY(
        ask(simulator.port(), R"({"set":"/control/identify","value":true})").contains("refused on request"));
    QVERIFY(order(&simulator, "/phone", R"("near")"));
    QTRY_COMPARE_WITH_TIMEOUT(valueOf(simulator, "/status/bluetooth/device/rssi").toInt(), -50, 20000);
    QVERIFY(order(&simulator, "/phone", R"("away")"));
    QCOMPARE(valueOf(simulator, "/status/bluetooth/state").toString(), QStringLiteral("idle"));
    QVERIFY(order(&simulator, "/usb", R"("unplugged")"));
    QCOMPARE(valueOf(simulator, "/status/usb/state").toString(), QStringLiteral("disconnected"));

    Receiver meters("239.255.77.10", 47710);
    const auto shown = [&](int byte) { return int(meters.received.last().at(byte)); };
    const auto isClipped = [](const QByteArray &levels) { return levels.at(3) == 3 && levels.at(15) == -7; };
    QVERIFY(order(&simulator, "/levels/dante_tx/3", "-7"));
    ask(simulator.port(), R"({"set":"/control/req_metering", "value":100})");
    QTRY_VERIFY(!meters.received.isEmpty());
    QVERIFY(order(&simulator, "/clip", R"("dante_rx/0")"));
    QTRY_VERIFY(std::any_of(meters.received.cbegin(), meters.received.cend(), isClipped));
    QTRY_COMPARE(said.size(), 1);
    QCOMPARE(said.first().first().toByteArray(), QByteArray(R"({"cmd":"now","param":"/clip","value":""})"));
    QTRY_VERIFY(shown(3) < 3 && shown(15) == -7);
}

void LifeTest::vanishesAndReturns()
{
    Simulator simulator(optionsOf(), quick());
    QCOMPARE(simulator.start(), QString());
    QSignalSpy said(simulator.orders(), &Orders::said);
    QVERIFY(order(&simulator, "/present", "false"));
    QVERIFY(isSilent(simulator));
    QVERIFY(order(&simulator, "/present", "true"));
    QVERIFY(isUp(simulator));
    QVERIFY(order(&simulator, "/faults", R"({"vanish-after":2,"return-after":1000})"));
    QVERIFY(isUp(simulator));
    QVERIFY(isUp(simulator));
    QVERIFY(isSilent(simulator));
    QTRY_VERIFY(!isSilent(simulator));
    QCOMPARE(said.size(), 2); // what was ordered is not told
    QCOMPARE(said.at(0).first().toByteArray(),
             QByteArray(R"({"cmd":"now","param":"/present","value":false})"));
    QCOMPARE(said.at(1).first().toByteArray(),
             QByteArray(R"({"cmd":"now","param":"/present","value":true})"));
}

void LifeTest::refusedOrder_data()
{
    QTest::addColumn<QByteArray>("line");
    QTest::addColumn<QByteArray>("reason");
    const auto row = [](const QByteArray &line, const char *reason) {
        QTest::newRow(line.left(40)) << line << QByteArray(reason);
    };
    row("", "no request: an order is a JSON object");
    row("{", "no JSON: ");
    row("{\"get\":\"" + QByteArray(Orders::MostBytes, 'x'),
        "no request: the line is longer than 65536 bytes");
    row(R"({"set":"/faults","value":{"drop":1.5,"latency":3}})",
        "/faults/drop: 1.5 is not a number from 0 to 1");
    row(R"({"set":"/faults/latency","value":"3"})", "/faults/latency: expected a whole number, got a text");
    row(R"({"set":"/levels/dante_rx/4","value":0})", "/levels/dante_rx/4: no such parameter");
}

void LifeTest::refusedOrder()
{
    QFETCH(QByteArray, line);
    QFETCH(QByteArray, reason);
    Orders orders(presenceOrders(), {{QStringLiteral("drop"), 0.25}});
    QSignalSpy changes(&orders, &Orders::changed);
    const QByteArray before = orders.answer(R"({"get":"/faults"})");
    const QByteArray answer = orders.answer(line);
    QVERIFY2(answer.contains(R"("result":")" + reason), answer);
    QCOMPARE(orders.answer(R"({"get":"/faults"})"), before);
    QVERIFY(before.contains(R"("drop":0.25)") && changes.isEmpty());
}

void LifeTest::stateFile()
{
    QTemporaryDir dir;
    const QString file = dir.filePath(QStringLiteral("state.json"));
    {
        Simulator simulator(optionsOf(file), quick());
        QCOMPARE(simulator.start(), QString());
        ask(simulator.port(), R"({"set":"/system/usb/mode","value":"speakerphone_ec"})");
        QTRY_VERIFY(QFile::exists(file)); // written without waiting for the end
        ask(simulator.port(), R"({"set":"/preset/dsp/mixer/6/9", "value":-7})");
        ask(simulator.port(), R"({"set":"/control/save_preset", "value":"1"})");
        ask(simulator.port(), R"({"set":"/control/bluetooth/clear_list","value":true})");
    }
    Simulator again(optionsOf(file), quick());
    QCOMPARE(again.start(), QString());
    QCOMPARE(valueOf(again, "/system/usb/mode").toString(), QStringLiteral("speakerphone_ec"));
    QCOMPARE(valueOf(again, "/preset/dsp/mixer/6/9").toInt(), -7);
    QCOMPARE(valueOf(again, "/status/bluetooth/list_size").toInt(), 1);
    QCOMPARE(ask(again.port(), "LOAD 1\r"), QByteArray("ACK LOAD 1\r"));
    QCOMPARE(ask(again.port(), "LOAD 2\r"), QByteArray("NACK LOAD 2\r"));
}

void LifeTest::damagedStateFile_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QString>("problem");
    QTest::newRow("no JSON") << QByteArray("{") << "no JSON object";
    QTest::newRow("other format") << QByteArray("{\"format\":2}") << "the file is not of format 1";
    QTest::newRow("no recordings") << QByteArray(
        R"({"format":1,"system":{},"preset":{},"presets":[],"paired":[]})")
                                   << "the member \"recordings_ms\" is missing";
    QTest::newRow("bad value") << QByteArray(
        R"({"format":1,"system":{"usb":{"mode":"x"}},"preset":{},"presets":[],"paired":[],"recordings_ms":[]})")
                               << "/system/usb/mode: \"x\" is not one of";
}

void LifeTest::damagedStateFile()
{
    QFETCH(QByteArray, content);
    QFETCH(QString, problem);
    QTemporaryDir dir;
    QFile file(dir.filePath(QStringLiteral("state.json")));
    QVERIFY(file.open(QIODevice::ReadWrite));
    file.write(content);
    file.flush();
    {
        Simulator simulator(optionsOf(file.fileName()), quick());
        const QString told = simulator.start();
        QVERIFY2(told.contains(problem) && told.startsWith(QDir::toNativeSeparators(file.fileName())),
                 qPrintable(told));
    }
    file.seek(0);
    QCOMPARE(file.readAll(), content); // left for its owner to mend
}

void LifeTest::voiceCue_data()
{
    QTest::addColumn<QByteArray>("file");
    QTest::addColumn<bool>("taken");
    const QByteArray header
        = QByteArray::fromHex("52494646280000005741564566"
                              "6d74201000000001000100803e0000007d00000200100064617461040000"
                              "00");
    QTest::newRow("good") << header + "1234" << true;
    QTest::newRow("no wave") << QByteArray("hello") << false;
}

/// From the order to the recording: what came is kept as it came, and only a playable file replaces a cue.
void LifeTest::voiceCue()
{
    QFETCH(QByteArray, file);
    QFETCH(bool, taken);
    QTemporaryDir dir;
    Options options = optionsOf(dir.filePath(QStringLiteral("state.json")));
    options.keepUpload = dir.filePath(QStringLiteral("upload.wav"));
    Simulator simulator(options, quick());
    QCOMPARE(simulator.start(), QString());
    support::TftpPeer server("127.0.0.2");
    const QByteArray uri = "tftp://127.0.0.2:" + QByteArray::number(server.localPort()) + "/cue.wav";
    const QByteArray order
        = R"({"set":"/control/fwdl","value":{"target":"VC_BT_SUCCESS","uri":")" + uri + "\"}}";
    QVERIFY(ask(simulator.port(), order).contains("\"OK\""));
    server.take();
    server.answer(QStringLiteral("00030001") + QLatin1String(file.toHex()));
    QCOMPARE(server.take(), QStringLiteral("4/1/0"));
    QTRY_VERIFY(valueOf(simulator, "/status/voice_cue/2/valid").toBool());

    QFile kept(options.keepUpload);
    QVERIFY(kept.open(QIODevice::ReadOnly));
    QCOMPARE(kept.readAll(), file);
    simulator.save();
    const QJsonArray lengths
        = readState(options.stateFile).state.value(QStringLiteral("recordings_ms")).toArray();
    QCOMPARE(lengths.at(2).toInt() == 1, taken); // two samples round up to 1 ms
}

/// The program says where it is, takes orders, and puts things in order when it is told to end.
void LifeTest::program()
{
    QTemporaryDir dir;
    const QString file = dir.filePath(QStringLiteral("state.json"));
    QProcess program;
    program.start(QStringLiteral(KBX_SIMULATOR),
                  {QStringLiteral("--name=KBX-0300"), QStringLiteral("--address=127.0.0.12"),
                   QStringLiteral("--state=") + file, QStringLiteral("--exit-with-parent"),
                   QStringLiteral("--orders"), QStringLiteral("--jitter=7")});
    const auto line = [&program] {
        return QTest::qWaitFor([&] { return program.canReadLine(); }, 20000) ? program.readLine().trimmed()
                                                                             : "get nothing";
    };
    QCOMPARE(line(), QByteArray("KBX-0300 on 127.0.0.12:47800"));
    QVERIFY(line().startsWith(R"({"cmd":"now","param":"/faults","value":{)"));
    program.write("{\"get\":\"/faults/jitter\"}\n");
    QByteArray answer;
    while (!answer.contains("get"))
        answer = line();
    QCOMPARE(answer, QByteArray(R"({"cmd":"get","param":"/faults/jitter","result":"OK","value":7})"));

    QVERIFY(!QFile::exists(file));
    program.terminate();
    QTRY_COMPARE(program.state(), QProcess::NotRunning);
    QCOMPARE(program.exitStatus(), QProcess::NormalExit);
    QCOMPARE(program.exitCode(), 0);
    QVERIFY(!readState(file).state.isEmpty());
}

/// A reader that takes no line, and then is gone, does not hold the device up; half an order is none.
void LifeTest::outlivesItsReader()
{
    QProcess reader;
    QProcess program;
    program.setStandardOutputProcess(&reader);
    program.start(QStringLiteral(KBX_SIMULATOR),
                  {QStringLiteral("--address=127.0.0.12"), QStringLiteral("--orders")});
    reader.start(QStringLiteral(KBX_SIMULATOR), {QStringLiteral("--address=127.0.0.13")});
    for (int i = 0; i < 5000; ++i) // some 700 KB of answers
        program.write("{\"get\":\"/levels\"}\n");
    program.write("{\"set\":\"/usb\",\"value\":\"unplugged\"}\n");
    const auto computerIs = [](const QByteArray &state) {
        Receiver client;
        client.socket.writeDatagram("{\"get\":\"/status/usb\"}", QHostAddress(QStringLiteral("127.0.0.12")),
                                    47800);
        return QTest::qWaitFor([&] { return !client.received.isEmpty(); }, 100)
            && client.received.last().contains('"' + state + '"');
    };
    QTRY_VERIFY_WITH_TIMEOUT(computerIs("disconnected"), 60000);
    reader.kill();
    QVERIFY(reader.waitForFinished());
    program.write("{\"set\":\"/usb\",\"value\":\"plugged\"}\n{\"set\":\"/present\",\"value\":false}");
    program.closeWriteChannel();
    QTRY_VERIFY_WITH_TIMEOUT(computerIs("connected"), 20000);
    program.terminate();
    QVERIFY(program.waitForFinished());
    QCOMPARE(program.exitCode(), 0);
}

QTEST_GUILESS_MAIN(LifeTest)
#include "tst_life.moc"
