#include "tests/transfer/opened_dialog.h"

#include <QProcess>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

using namespace std::chrono_literals;

namespace {

/// Fetches with Net::TFTP; its engine stays as it is, only the block size it expects is the device's.
const char FetchScript[] = R"(
    use Net::TFTP;
    my $io = Net::TFTP->new('127.0.0.2', Mode => 'octet', Retries => 3)->get('cue.wav') or die 'no request';
    (tied *$io)->{blksize} = 256;
    binmode STDOUT;
    while (1) {
        my $read = sysread($io, my $part, 4096);
        die 'transfer: ' . $io->error if !defined $read || $read < 0;
        last if $read == 0;
        print $part;
    }
)";

} // namespace

/// Files on their whole way through the open dialog, to this project's client and to others' programs.
class TestFileFetch : public QObject
{
    Q_OBJECT

private slots:
    void arrives_data();
    void arrives();
    void arrivesAtAForeignClient_data();
    void arrivesAtAForeignClient();
    void readsAsTftpToAProtocolAnalyser();
};

void TestFileFetch::arrives_data()
{
    QTest::addColumn<int>("size");
    QTest::addColumn<double>("faults");
    for (int size : {1, 255, 256, 257, 512, 1000, 160 * 1024, 4 * 1024 * 1024})
        QTest::addRow("%d bytes", size) << size << 0.0;
    for (int size : {1, 512, 1000, 160 * 1024, 4 * 1024 * 1024})
        QTest::addRow("%d bytes, 5 %% lost and 5 %% doubled", size) << size << 0.05;
}

void TestFileFetch::arrives()
{
    QFETCH(int, size);
    QFETCH(double, faults);
    UpdateDialog::Intervals intervals;
    if (faults > 0) {
        intervals.transfer.packetTimeout = 100ms;
        intervals.transfer.step = 0ms;
    }
    OpenedDialog offer(size, intervals);
    TftpClient client(faults, 20240607);
    QSignalSpy fetched(&client, &TftpClient::finished);
    client.fetch(server);
    QVERIFY(fetched.wait(150000));
    QVERIFY2(client.content() == pattern(size), "the file differs");
    QTRY_COMPARE(offer.status(), updatetexts::finished(size));
    QVERIFY(faults == 0.0 || size < 100000 || client.packetsLost() > size / 256 / 20);
}

void TestFileFetch::arrivesAtAForeignClient_data()
{
    QTest::addColumn<int>("size");
    for (int size : {1, 256, 1000, 160 * 1024})
        QTest::addRow("%d bytes", size) << size;
}

void TestFileFetch::arrivesAtAForeignClient()
{
    QFETCH(int, size);
    OpenedDialog offer(size);
    QProcess perl;
    perl.start(QStringLiteral("perl"), {QStringLiteral("-e"), QLatin1String(FetchScript)});
    QSignalSpy ended(&perl, QOverload<int, QProcess::ExitStatus>::of(&QProcess::finished));
    QVERIFY2(ended.wait(30000), "needs perl with Net::TFTP (Debian: libnet-tftp-perl)");
    QCOMPARE(QString::fromLatin1(perl.readAllStandardError()), QString());
    QVERIFY2(perl.readAllStandardOutput() == pattern(size), "the file differs");
    QTRY_COMPARE(offer.status(), updatetexts::finished(size));
}

void TestFileFetch::readsAsTftpToAProtocolAnalyser()
{
    const QTemporaryDir dir;
    const QString capture = dir.filePath(QStringLiteral("capture.pcap"));
    QProcess recorder;
    recorder.start(QStringLiteral("dumpcap"), words("-i lo -f udp -w") << capture);
    QByteArray said;
    QTRY_VERIFY2((said += recorder.readAllStandardError()).contains("File:"),
                 "needs dumpcap (Debian: tshark)");
    OpenedDialog offer(512);
    TftpClient client;
    client.fetch(QHostAddress::LocalHost);
    QTRY_COMPARE(offer.status(), updatetexts::finished(512));
    const QStringList expected = words("1,,, 3,1,256, 4,1,, 3,2,256, 4,2,, 3,3,, 4,3,,");
    QStringList seen;
    for (int attempt = 0; attempt < 10 && seen.size() < expected.size(); ++attempt) {
        QProcess analyser;
        analyser.start(QStringLiteral("tshark"),
                       words("-Y tftp -T fields -E separator=, -e tftp.opcode -e tftp.block "
                             "-e data.len -e _ws.expert -r")
                           << capture);
        QVERIFY2(analyser.waitForFinished(30000), "needs tshark");
        seen = words(analyser.readAllStandardOutput().replace('\n', ' ').constData());
        seen.removeDuplicates(); // on a slow machine the client repeats a packet
    }
    QCOMPARE(seen, expected);
    recorder.terminate();
    QVERIFY(recorder.waitForFinished());
}

QTEST_MAIN(TestFileFetch)
#include "tst_file_fetch.moc"
