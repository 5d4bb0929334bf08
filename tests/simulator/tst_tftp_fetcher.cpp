#include "simulator/tftp_fetcher.h"
#include "tests/support/tftp_peer.h"

#include <QSignalSpy>
#include <QTest>

using namespace sim;
using support::pattern;
using support::words;

namespace {

/// A fetcher that has asked a server which the test plays by hand.
struct Rig
{
    Rig()
        : fetcher(quick(), {}, 1)
    {
        fetcher.fetch({server.localAddress(), server.localPort(), QStringLiteral("/home/ü/cue one.wav")},
                      QHostAddress(QStringLiteral("127.0.0.11")));
    }

    static Intervals quick()
    {
        Intervals intervals;
        intervals.tftpRequest = intervals.tftpAck = intervals.tftpAckMost = 100;
        intervals.tftpRepeats = 4;
        return intervals;
    }

    support::TftpPeer server{"127.0.0.2"};
    TftpFetcher fetcher;
    QSignalSpy finished{&fetcher, &TftpFetcher::finished};
    QSignalSpy failed{&fetcher, &TftpFetcher::failed};
};

} // namespace

/// The device's side of a voice-cue transfer.
class TftpFetcherTest : public QObject
{
    Q_OBJECT

private slots:
    void follows_data();
    void follows();
    void heedsNoThirdPort();
    void uri_data();
    void uri();
};

void TftpFetcherTest::follows_data()
{
    QTest::addColumn<QStringList>("answers");
    QTest::addColumn<QStringList>("packets");
    QTest::addColumn<QString>("problem"); // empty: the file came
    const auto row = [](const char *name, const char *answers, const char *packets, const char *problem) {
        QTest::newRow(name) << words(answers) << words(packets) << QString::fromLatin1(problem);
    };
    row("request lost", "- d1:3", "2*1/12136/25 4/1/0", "");
    row("last acknowledgement lost", "d1:256 d2:0 d2:0", "1/12136/25 4/1/0 2*4/2/0", "");
    row("deaf", "5*-", "5*1/12136/25", "the server does not answer");
    row("refusing", "000500016e6f00", "1/12136/25", "the server refused: error 1, no");
    row("stalling", "d1:256 5*-", "1/12136/25 5*4/1/0", "no block after 1 came");
    row("oversized", "d1:512 -", "1/12136/25 5/4/15", "a block of 512 bytes");
}

void TftpFetcherTest::follows()
{
    QFETCH(QStringList, answers);
    QFETCH(QStringList, packets);
    QFETCH(QString, problem);
    Rig rig;
    QStringList sent{rig.server.take()};
    QCOMPARE(rig.server.packet(),
             QByteArray("\0\1", 2) + u8"/home/ü/cue one.wav" + QByteArray("\0octet\0", 7));
    for (const QString &answer : answers) {
        rig.server.answer(answer);
        if (sent.size() < packets.size())
            sent.append(rig.server.take());
    }
    QCOMPARE(sent, packets);
    QTRY_COMPARE(rig.finished.size() + rig.failed.size(), 1);
    QCOMPARE(rig.failed.value(0).value(0).toString(), problem);
    const QByteArray file = rig.finished.value(0).value(0).toByteArray();
    QCOMPARE(file, pattern(file.size()));
    QVERIFY2(!rig.server.hasPendingDatagrams(), "a packet after the end");
}

void TftpFetcherTest::heedsNoThirdPort()
{
    Rig rig;
    rig.server.take();
    rig.server.answer(QStringLiteral("d1:256"));
    QCOMPARE(rig.server.take(), QStringLiteral("4/1/0"));
    support::TftpPeer impostor("127.0.0.2");
    impostor.answerInsteadOf(rig.server, QStringLiteral("d2:7"));
    QCOMPARE(impostor.take(), QStringLiteral("5/5/17"));
    rig.server.answer(QStringLiteral("d2:0"));
    QTRY_COMPARE(rig.finished.value(0).value(0).toByteArray(), pattern(256));
}

void TftpFetcherTest::uri_data()
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

void TftpFetcherTest::uri()
{
    QFETCH(QString, text);
    QFETCH(QString, parts);
    const std::optional<TftpUri> uri = parseTftpUri(text);
    QCOMPARE(uri ? QStringLiteral("%1 %2 %3").arg(uri->host.toString(), QString::number(uri->port), uri->file)
                 : QString(),
             parts);
}

QTEST_GUILESS_MAIN(TftpFetcherTest)
#include "tst_tftp_fetcher.moc"
