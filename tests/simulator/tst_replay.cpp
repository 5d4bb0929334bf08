#include "simulator/replay.h"
#include "simulator/simulator.h"
#include "tests/simulator/client.h"

#include <QJsonDocument>
#include <QTemporaryDir>

using namespace sim;
using namespace support;

namespace {

constexpr char Header[] = R"({"recording":1,"created":"2026-01-31T12:00:00Z","host":"1.0"})";
constexpr char DeviceLine[]
    = R"({"t_ms":0,"dir":"device","device":"KBX-0007","type":1,"product":"TarnKBX",)"
      R"("model":"KBX","mac":"02:4B:42:0B:00:07","version":"1.4.2","feature_level":3})";

QByteArray line(qint64 atMs, const char *kind, const QByteArray &text, bool encoded = false)
{
    const QString message = encoded ? QString::fromLatin1(text.toBase64()) : QString::fromUtf8(text);
    const QJsonObject object{{QStringLiteral("t_ms"), atMs},
                             {QStringLiteral("dir"), QLatin1String(kind)},
                             {QStringLiteral("device"), QStringLiteral("KBX-0007")},
                             {encoded ? QStringLiteral("bytes") : QStringLiteral("text"), message}};
    return QJsonDocument(object).toJson(QJsonDocument::Compact);
}

Options onLoopback()
{
    Options options;
    options.address = deviceAddress();
    options.port = 0;
    return options;
}

} // namespace

/// A recording and the device that answers from it.
class ReplayTest : public QObject
{
    Q_OBJECT

private slots:
    void repeatsASession();
    void announcesTheRecordedDevice();
    void answers();
    void levels();
    void damage_data();
    void damage();
    void longFile();

private:
    QString written(const QByteArray &content);
    RecordingRead read(const QByteArrayList &lines, const QString &device = {});

    QTemporaryDir m_dir;
};

QString ReplayTest::written(const QByteArray &content)
{
    QFile file(m_dir.filePath(QStringLiteral("session.jsonl")));
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
        qFatal("no recording could be written");
    return file.fileName();
}

RecordingRead ReplayTest::read(const QByteArrayList &lines, const QString &device)
{
    return readRecording(written((QByteArrayList{Header, DeviceLine} + lines).join('\n') + '\n'), device);
}

/// What a device answered in a session, its replay answers again, though the same texts came several times.
void ReplayTest::repeatsASession()
{
    const QByteArrayList session{R"({"get":"/info"})",
                                 R"({"get":"/preset/dsp/dante_rx"})",
                                 R"({"set":"/preset/dsp/dante_rx/0/gain", "value":-12})",
                                 R"({"get":"/preset/dsp/dante_rx"})",
                                 R"({"set":"/preset/dsp/dante_rx/0/gain", "value":21})",
                                 u8R"({"set":"/system/bluetooth/name","value":"Büro 📱"})",
                                 R"({"get":"/system/bluetooth"})",
                                 "SAVE 3\r",
                                 R"({"get":"/preset/dsp/dante_rx"})"};
    QByteArrayList recorded;
    QByteArrayList replies;
    Simulator simulator(onLoopback(), Intervals());
    QCOMPARE(simulator.start(), QString());
    for (const QByteArray &request : session) {
        replies << ask(simulator.port(), request);
        recorded << line(recorded.size(), "tx", request) << line(recorded.size(), "rx", replies.last());
    }

    const RecordingRead again = read(recorded);
    QCOMPARE(again.notes, QStringList());
    Replay replay(again.recording, onLoopback(), Intervals());
    QCOMPARE(replay.start(), QString());
    QByteArrayList replayed;
    for (const QByteArray &request : session)
        replayed << ask(replay.port(), request);
    QCOMPARE(replayed, replies);
}

void ReplayTest::announcesTheRecordedDevice()
{
    const RecordingRead recorded = read({});
    Receiver network("239.255.77.1", 47700);
    Replay replay(recorded.recording, onLoopback(), Intervals());
    QCOMPARE(replay.start(), QString());
    QTRY_VERIFY(!network.received.isEmpty());
    const QByteArray announced = network.received.first();
    QVERIFY2(announced.contains(R"("name":"KBX-0007")") && announced.contains(R"("version":"1.4.2")")
                 && announced.contains(R"("feature_level":3)"),
             announced);
}

void ReplayTest::answers()
{
    const RecordingRead recorded = read(
        {line(5, "rx", "from before"), line(10, "tx", R"({"get":"/a"})"), line(20, "tx", R"({"get":"/b"})"),
         line(30, "rx", R"({"cmd":"get","param":"/b","result":"OK","value":1})"),
         line(130, "rx", R"({"cmd":"get","param":"/a","result":"OK","value":1})"),
         line(131, "rx", R"({"cmd":"get","param":"/a","result":"OK","value":2})"),
         line(140, "tx", "\xff\xfe", true), line(140, "rx", "\xfe\xff", true),
         line(150, "tx", R"({"get":"/a"})"), line(160, "tx", R"({"get":"/a"})"),
         line(165, "rx", R"({"cmd":"get","param":"/a","result":"/a: no"})"),
         line(190, "tx", R"({"get":"/b"})")});
    QCOMPARE(recorded.notes,
             QStringList{QStringLiteral("Requests that have no reply in it and will get none: 1 of 5.")});
    Replay replay(recorded.recording, onLoopback(), Intervals());
    QCOMPARE(replay.start(), QString());
    QElapsedTimer clock;
    clock.start();
    QCOMPARE(ask(replay.port(), R"({"get":"/a"})"),
             QByteArray(R"({"cmd":"get","param":"/a","result":"OK","value":1})"));
    QVERIFY(clock.elapsed() >= 119); // 130 - 10, less what rounding takes
    Receiver client;
    client.ask(replay.port(), R"({"get":"/b"})"); // the second reply to /a came after the request for /b
    QTRY_COMPARE(client.received.size(), 2);
    for (int again = 0; again < 2; ++again)
        QCOMPARE(ask(replay.port(), "\xff\xfe"), QByteArray("\xfe\xff"));
    QCOMPARE(ask(replay.port(), R"({"get":"/a"})", SilenceMs), QByteArray()); // as recorded
    const QByteArray refusal = R"({"cmd":"get","param":"/a","result":"/a: no"})";
    QCOMPARE(ask(replay.port(), R"({"get":"/a"})"), refusal);
    QCOMPARE(ask(replay.port(), R"({"get":"/a"})"), refusal); // the last one again
    QCOMPARE(ask(replay.port(), R"({ "get" : "/a" })"), refusal); // the last reply for that path
    QCOMPARE(ask(replay.port(), R"({"set":"/a","value":1})"),
             QByteArray(R"({"cmd":"set","param":"/a","result":"/a: not in the recording"})"));
    replay.orders()->answer(R"({"set":"/faults/refuse","value":"/b"})");
    QVERIFY(ask(replay.port(), R"({"get":"/b"})").contains("refused on request"));
}

void ReplayTest::levels()
{
    const QByteArray metering = R"({"get":"/system/metering"})";
    const QByteArray start = R"({"set":"/control/req_metering", "value":100})";
    Replay replay(read({line(0, "tx", metering),
                        line(1, "rx",
                             R"({"cmd":"get","param":"/system/metering","result":"OK",)"
                             R"("value":{"ip":"239.255.77.33","port":47733}})"),
                        line(2, "levels", "too early", true), line(10, "tx", start), line(11, "rx", "{}"),
                        line(20, "levels", "one", true), line(140, "levels", "two", true)})
                      .recording,
                  onLoopback(), Intervals());
    QCOMPARE(replay.start(), QString());
    Receiver meters("239.255.77.33", 47733);
    ask(replay.port(), metering);
    ask(replay.port(), start);
    QElapsedTimer clock;
    clock.start();
    QTRY_COMPARE(meters.received.size(), 2);
    QVERIFY(clock.elapsed() >= 100);
    QCOMPARE(meters.received, (QByteArrayList{"one", "two"}));
}

void ReplayTest::damage_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QString>("device");
    QTest::addColumn<QString>("sentence");
    const QByteArray start = QByteArray(Header) + '\n' + DeviceLine + '\n';
    const QByteArray tx = line(1, "tx", "QUERY\r") + '\n';
    const QByteArray rx = line(2, "rx", "ACK\r") + '\n';
    const auto row
        = [](const char *name, const QByteArray &content, const char *device, const char *sentence) {
              QTest::newRow(name) << content << QString::fromLatin1(device) << QString::fromLatin1(sentence);
          };
    row("empty", "", "", "it is no recording: its first line is not");
    row("no recording", tx, "", "it is no recording: its first line is not");
    row("other format", R"({"recording":2})", "", "it is a recording of format 2, not 1");
    row("no device", Header, "", "there is no device in it");
    row("of another device", start, "KBX-0008", "it is of KBX-0007, not of KBX-0008");
    row("nothing asked", start, "", "Nothing was asked of KBX-0007 in it.");
    row("cut off", start + tx + rx + line(3, "tx", "QUERY\r").chopped(9), "",
        "The recording is cut off in line 5; it is replayed up to there.");
    row("damaged lines",
        start + tx + "\x01\x02\n" + line(2, "rx", "???").replace("text", "bytes") + '\n' + rx, "",
        "Damaged lines that were skipped: 2, the first is line 4.");
    row("times go back", start + line(9, "tx", "QUERY\r") + '\n' + rx, "", "Times in it go back;");
    row("two devices", start + QByteArray(DeviceLine).replace("0007", "0009") + '\n' + tx + rx, "",
        "It is of KBX-0007, KBX-0009; --name chooses.");
    row("endless line", start + tx + rx + QByteArray(3 << 20, 'x') + '\n', "",
        "Damaged lines that were skipped: 1, the first is line 5.");
}

void ReplayTest::damage()
{
    QFETCH(QByteArray, content);
    QFETCH(QString, device);
    QFETCH(QString, sentence);
    const RecordingRead result = readRecording(written(content), device);
    const QString told = result.error.isEmpty() ? result.notes.join(QLatin1Char('\n')) : result.error;
    QVERIFY2(told.startsWith(sentence) && !told.contains(QLatin1Char('\n')), qPrintable(told));
    if (content.contains("ACK"))
        QCOMPARE(result.recording.requests.first().replies.first().bytes, QByteArray("ACK\r"));
}

/// A hole of a gigabyte stands for a long session: the file is read up to its bound.
void ReplayTest::longFile()
{
    const QByteArray start = QByteArray(Header) + '\n' + DeviceLine + '\n' + line(0, "tx", "QUERY\r") + '\n'
        + line(7000, "rx", "ACK\r") + '\n';
    QFile file(written(start));
    QVERIFY(file.open(QIODevice::ReadWrite) && file.resize(qint64(1) << 30));
    const RecordingRead result = readRecording(file.fileName(), {});
    QCOMPARE(result.error, QString());
    QCOMPARE(result.notes.last(), QStringLiteral("It is longer than 128 MB; the first 7 s are replayed."));
    QCOMPARE(result.recording.requests.size(), 1);
}

QTEST_GUILESS_MAIN(ReplayTest)
#include "tst_replay.moc"
