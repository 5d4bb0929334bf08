#include "simulator/tftp_fetcher.h"
#include "simulator/wave_file.h"
#include "tests/simulator/scripted_tftp_server.h"

#include <QSignalSpy>
#include <QTest>
#include <QtEndian>

using namespace sim;
using support::ScriptedTftpServer;
using Manner = support::ScriptedTftpServer::Manner;
using Kind = sim::TftpFaultSettings::Kind;

Q_DECLARE_METATYPE(support::ScriptedTftpServer::Manner)
Q_DECLARE_METATYPE(sim::TftpFaultSettings)

namespace {

QByteArray content(int size)
{
    QByteArray bytes(size, '\0');
    for (int i = 0; i < size; ++i)
        bytes[i] = char(i * 7 + i / 256);
    return bytes;
}

Intervals quick()
{
    Intervals intervals;
    intervals.tftpRequest = 30;
    intervals.tftpAck = 5;
    intervals.tftpAckMost = 40;
    intervals.tftpRepeats = 4;
    intervals.tftpLinger = 400;
    return intervals;
}

TftpUri uriOf(const ScriptedTftpServer &server)
{
    return {server.address(), server.port(), QStringLiteral("/home/ü/cue one.wav")};
}

QHostAddress deviceAddress()
{
    return QHostAddress(QStringLiteral("127.0.0.11"));
}

template <typename Number>
QByteArray little(Number number)
{
    QByteArray bytes(int(sizeof number), '\0');
    qToLittleEndian(number, bytes.data());
    return bytes;
}

QByteArray chunk(const char *name, const QByteArray &body)
{
    return name + little(quint32(body.size())) + body + QByteArray(body.size() % 2, '\0');
}

QByteArray format(quint16 tag, quint16 channels, quint32 rate, quint16 bits)
{
    const quint16 frame = quint16(channels * bits / 8);
    return chunk("fmt ",
                 little(tag) + little(channels) + little(rate) + little(quint32(rate * frame)) + little(frame)
                     + little(bits));
}

QByteArray wave(const QByteArray &chunks)
{
    return chunk("RIFF", "WAVE" + chunks);
}

} // namespace

/// The device's side of a voice-cue transfer: fetching the file and judging it.
class TestTftp : public QObject
{
    Q_OBJECT

private slots:
    void request();
    void transfer_data();
    void transfer();
    void failure_data();
    void failure();
    void uri_data();
    void uri();
    void waveFile_data();
    void waveFile();
};

void TestTftp::request()
{
    ScriptedTftpServer server("x", Manner::Good);
    TftpFetcher fetcher(quick(), {}, 1);
    fetcher.fetch(uriOf(server), deviceAddress());
    QTRY_VERIFY(!server.request().isEmpty());
    QCOMPARE(server.request(), QByteArray("\0\1", 2) + u8"/home/ü/cue one.wav" + QByteArray("\0octet\0", 7));
    QTRY_VERIFY(server.isDone());
}

void TestTftp::transfer_data()
{
    QTest::addColumn<int>("size");
    QTest::addColumn<Manner>("manner");
    QTest::addColumn<TftpFaultSettings>("faults");
    for (const int size : {0, 1, 255, 256, 257, 512, 1000, 20000})
        QTest::addRow("%d bytes", size) << size << Manner::Good << TftpFaultSettings();
    QTest::newRow("blocks from a third port") << 5000 << Manner::Impostor << TftpFaultSettings();
    QTest::newRow("lost acknowledgements") << 5000 << Manner::Good << TftpFaultSettings{Kind::LostAck, 0, 0};
    QTest::newRow("wrong numbers") << 5000 << Manner::Good << TftpFaultSettings{Kind::WrongBlock, 0, 0};
    QTest::newRow("a tenth lost, a tenth doubled")
        << 20000 << Manner::Good << TftpFaultSettings{Kind::None, 0.1, 0.1};
}

void TestTftp::transfer()
{
    QFETCH(int, size);
    QFETCH(Manner, manner);
    QFETCH(TftpFaultSettings, faults);
    ScriptedTftpServer server(content(size), manner);
    TftpFetcher fetcher(quick(), faults, 4);
    QSignalSpy finished(&fetcher, &TftpFetcher::finished);
    QSignalSpy failed(&fetcher, &TftpFetcher::failed);
    fetcher.fetch(uriOf(server), deviceAddress());
    QTRY_COMPARE(finished.size(), 1);
    QCOMPARE(finished.first().first().toByteArray(), content(size));
    QTRY_VERIFY(server.isDone()); // also when the last acknowledgement was lost
    QCOMPARE(finished.size(), 1);
    QCOMPARE(failed.size(), 0);
}

void TestTftp::failure_data()
{
    QTest::addColumn<Manner>("manner");
    QTest::addColumn<TftpFaultSettings>("faults");
    QTest::addColumn<QString>("reason");
    QTest::newRow("deaf") << Manner::Deaf << TftpFaultSettings() << "the server does not answer";
    QTest::newRow("refusing") << Manner::Refusing << TftpFaultSettings()
                              << "the server refused: error 1, no such file";
    QTest::newRow("stalling") << Manner::Stalling << TftpFaultSettings() << "no block after 2 came";
    QTest::newRow("oversized") << Manner::Oversized << TftpFaultSettings() << "a block of 512 bytes";
    QTest::newRow("own refusal") << Manner::Good << TftpFaultSettings{Kind::Nack, 0, 0}
                                 << "refused by the fault option at block 3";
    QTest::newRow("own silence") << Manner::Good << TftpFaultSettings{Kind::Silence, 0, 0}
                                 << "no block after 3 came";
}

void TestTftp::failure()
{
    QFETCH(Manner, manner);
    QFETCH(TftpFaultSettings, faults);
    QFETCH(QString, reason);
    ScriptedTftpServer server(content(5000), manner);
    TftpFetcher fetcher(quick(), faults, 1);
    QSignalSpy finished(&fetcher, &TftpFetcher::finished);
    QSignalSpy failed(&fetcher, &TftpFetcher::failed);
    fetcher.fetch(uriOf(server), deviceAddress());
    QVERIFY(failed.wait());
    QCOMPARE(failed.first().first().toString(), reason);
    QTRY_COMPARE(server.negatives(), faults.kind == Kind::Nack ? 1 : 0);
    QCOMPARE(finished.size(), 0);
}

void TestTftp::uri_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("parts"); // empty: refused
    const auto row = [](const char *text, const char *parts) {
        QTest::newRow(text) << QString::fromLatin1(text) << QString::fromLatin1(parts);
    };
    row("tftp://10.0.0.7:69//home/a b/%41.wav", "10.0.0.7 69 /home/a b/%41.wav");
    row("tftp://10.0.0.7:69/C:/x.wav", "10.0.0.7 69 C:/x.wav");
    row("tftp://10.0.0.7/x", "10.0.0.7 69 x");
    row("tftp://10.0.0.7:6969/x", "10.0.0.7 6969 x");
    for (const char *bad : {"tftp://10.0.0.7:0/x", "tftp://10.0.0.7:65536/x", "tftp://10.0.0.7:69/",
                            "tftp://localhost:69/x", "tftp://10.1:69/x", "http://10.0.0.7:69/x"})
        row(bad, "");
}

void TestTftp::uri()
{
    QFETCH(QString, text);
    QFETCH(QString, parts);
    const std::optional<TftpUri> uri = parseTftpUri(text);
    QCOMPARE(uri ? QStringLiteral("%1 %2 %3").arg(uri->host.toString(), QString::number(uri->port), uri->file)
                 : QString(),
             parts);
}

void TestTftp::waveFile_data()
{
    QTest::addColumn<QByteArray>("file");
    QTest::addColumn<QString>("problem");
    QTest::addColumn<int>("lengthMs");
    const QByteArray good = format(1, 1, 16000, 16);
    const QByteArray second = chunk("data", QByteArray(32000, '\1'));
    const auto row = [](const char *name, const QByteArray &file, const char *problem, int ms) {
        QTest::newRow(name) << file << QString::fromLatin1(problem) << ms;
    };
    row("good", wave(good + second), "", 1000);
    row("stereo", wave(format(1, 2, 16000, 16) + second), "it has 2 channels instead of one", 0);
    row("rate", wave(format(1, 1, 44100, 16) + second), "its sampling rate is 44100 Hz instead of 16000", 0);
    row("depth", wave(format(1, 1, 16000, 8) + second), "it has 8 bits a sample instead of 16", 0);
    row("no data", wave(good), "it has no complete data chunk", 0);
    row("cut off", wave(good + second).chopped(1), "it has no complete data chunk", 0);
    row("length of 4 GB", wave(good + "data" + QByteArray(4, '\xff') + "1234"),
        "it has no complete data chunk", 0);
    row("empty", "", "it is no RIFF WAVE file", 0);
}

void TestTftp::waveFile()
{
    QFETCH(QByteArray, file);
    QFETCH(QString, problem);
    QFETCH(int, lengthMs);
    const WaveCheck check = checkWave(file);
    QCOMPARE(check.problem, problem);
    QCOMPARE(check.lengthMs, lengthMs);
}

QTEST_GUILESS_MAIN(TestTftp)
#include "test_tftp.moc"
