#include "tests/transfer/opened_dialog.h"

#include <QProcess>
#include <QSignalSpy>
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
    void arrivesAtAForeignClient();
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

void TestFileFetch::arrivesAtAForeignClient()
{
    const int size = 160 * 1024;
    OpenedDialog offer(size);
    QProcess perl;
    perl.start(QStringLiteral("perl"), {QStringLiteral("-e"), QLatin1String(FetchScript)});
    QSignalSpy ended(&perl, QOverload<int, QProcess::ExitStatus>::of(&QProcess::finished));
    QVERIFY2(ended.wait(30000), "needs perl with Net::TFTP (Debian: libnet-tftp-perl)");
    QCOMPARE(QString::fromLatin1(perl.readAllStandardError()), QString());
    QVERIFY2(perl.readAllStandardOutput() == pattern(size), "the file differs");
    QTRY_COMPARE(offer.status(), updatetexts::finished(size));
}

QTEST_MAIN(TestFileFetch)
#include "tst_file_fetch.moc"
