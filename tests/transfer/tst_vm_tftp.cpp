#include "tests/transfer/tftp_client.h"
#include "transfer/vm_tftp.h"

#include <QElapsedTimer>
#include <QNetworkDatagram>
#include <QSignalSpy>
#include <QTest>

using namespace std::chrono_literals;

namespace {

/// A transfer to a peer that the test plays by hand; it notes what either side sees.
struct Rig
{
    explicit Rig(int size, int blockSize = 256, std::chrono::milliseconds timeout = 5s)
    {
        peer.bind(QHostAddress(QHostAddress::LocalHost));
        transfer.reset(new VmTftp(blockSize, QStringLiteral("cue.wav"), pattern(size),
                                  QHostAddress::LocalHost, peer.localPort(), nullptr));
        VmTftp::Intervals intervals;
        intervals.packetTimeout = timeout;
        transfer->setIntervals(intervals);
        QObject::connect(transfer.data(), &VmTftp::logData,
                         [this](const QString &line) { log.append(line); });
        QObject::connect(transfer.data(), &VmTftp::progress,
                         [this](int percent) { progress.append(percent); });
        finished.reset(new QSignalSpy(transfer.data(), &VmTftp::finishedUpdates));
        transfer->setUp();
    }

    /// "opcode/block/bytes of data" of the next packet; empty when none comes.
    QString nextPacket()
    {
        if (!QTest::qWaitFor([this] { return peer.hasPendingDatagrams(); }, 3000))
            return {};
        const QNetworkDatagram datagram = peer.receiveDatagram();
        sender = datagram.senderPort();
        const QByteArray bytes = datagram.data();
        return QStringLiteral("%1/%2/%3")
            .arg(int(bytes.at(1)))
            .arg(bytes.mid(2, 2).toHex().toInt(nullptr, 16))
            .arg(bytes.size() - 4);
    }

    /// "a3" acknowledges block 3, "-" stays silent, anything else is the hex of a datagram; "+" joins two.
    void answer(const QString &words)
    {
        for (const QString &word : words.split(QLatin1Char('+'))) {
            if (word == QLatin1String("-"))
                continue;
            const QByteArray bytes = word.startsWith(QLatin1Char('a')) ? QByteArray::fromHex("0004")
                    + QByteArray::fromHex(QByteArray::number(word.mid(1).toInt(), 16).rightJustified(4, '0'))
                                                                       : QByteArray::fromHex(word.toLatin1());
            peer.writeDatagram(bytes, QHostAddress::LocalHost, quint16(sender));
        }
    }

    bool waitForEnd() { return !finished->isEmpty() || finished->wait(5000); }
    bool error() const { return finished->last().at(0).toBool(); }

    QUdpSocket peer;
    int sender = 0;
    QScopedPointer<VmTftp> transfer;
    QScopedPointer<QSignalSpy> finished;
    QStringList log;
    QVector<int> progress;
};

QString ackLine(int opcode, int got, int expected)
{
    return QStringLiteral("TFTP handle ACK (%1) - sequence: (%2) - Expected sequence: (%3)")
        .arg(opcode)
        .arg(got)
        .arg(expected);
}

QString timeoutLine(int sequence, int retry)
{
    return QStringLiteral("TFTP timeout: for sequence (%1) retrying %2 of 10").arg(sequence).arg(retry);
}

} // namespace

class TestVmTftp : public QObject
{
    Q_OBJECT

private slots:
    void follows_data();
    void follows();
    void narrates();
    void repeatsAWriteRequestUntilCancelled();
    void ignoresForeignSenders_data();
    void ignoresForeignSenders();
    void reportsADoubledLastAcknowledgementOnce();
    void outlivesAPeerThatIsAwayForAWhile();
    void failsAtOnceWhenItCannotStart_data();
    void failsAtOnceWhenItCannotStart();
};

void TestVmTftp::follows_data()
{
    QTest::addColumn<int>("size");
    QTest::addColumn<QStringList>("answers");
    QTest::addColumn<QStringList>("packets");
    QTest::addColumn<QVector<int>>("progress");
    QTest::addColumn<VmTftp::Failure>("failure");
    QTest::addColumn<QString>("logged");
    const auto ok = VmTftp::Failure::None;
    const QString success = QStringLiteral("TFTP Done: error(0)");
    const QString failed = QStringLiteral("TFTP Done: error(1)");
    const auto repeat
        = [](const char *word, int count) { return words(QByteArray(word).repeated(count).constData()); };
    QTest::newRow("short last block")
        << 1000 << words("a1 a2 a3 a4") << words("3/1/256 3/2/256 3/3/256 3/4/232")
        << QVector<int>{25, 50, 75} << ok << success;
    QTest::newRow("exact multiple") << 512 << words("a1 a2 a3") << words("3/1/256 3/2/256 3/3/0")
                                    << QVector<int>{50, 100} << ok << success;
    QTest::newRow("one byte") << 1 << words("a1") << words("3/1/1") << QVector<int>{} << ok << success;
    QTest::newRow("single precision")
        << 1500 << words("a1 a2 a3 a4 a5 a6") << words("3/1/256 3/2/256 3/3/256 3/4/256 3/5/256 3/6/220")
        << QVector<int>{16, 33, 50, 66, 83} << ok << success;
    QTest::newRow("wrong block number")
        << 1000 << words("a1 a2 a2 a3 a4") << words("3/1/256 3/2/256 3/3/256 3/3/256 3/4/232")
        << QVector<int>{25, 50, 75} << ok << ackLine(4, 2, 3);
    QTest::newRow("time-out after a wrong one")
        << 300 << words("a9 - a1 a2") << words("3/1/256 3/1/256 3/1/256 3/2/44") << QVector<int>{50} << ok
        << timeoutLine(1, 2);
    QTest::newRow("an error packet is a wrong one")
        << 1 << words("000500010000 a1") << words("3/1/1 3/1/1") << QVector<int>{} << ok << ackLine(5, 1, 1);
    QTest::newRow("short datagrams stand in nobody's way")
        << 1 << words("+00+000400+a1") << words("3/1/1") << QVector<int>{} << ok << success;
    QTest::newRow("ten time-outs are survived")
        << 1 << repeat("- ", 10) + words("a1") << repeat("3/1/1 ", 11) << QVector<int>{} << ok << success;
    QTest::newRow("the eleventh is not") << 1 << repeat("- ", 11) << repeat("3/1/1 ", 11) << QVector<int>{}
                                         << VmTftp::Failure::NoAnswer << failed;
    QTest::newRow("too many wrong ones")
        << 1 << repeat("a7 ", 12) << repeat("3/1/1 ", 12) << QVector<int>{} << VmTftp::Failure::NoAnswer
        << QStringLiteral("Retries exceeded for transfer...");
    QTest::newRow("refused") << 300 << words("a1 0005000000004e41434b") << words("3/1/256 3/2/44")
                             << QVector<int>{50} << VmTftp::Failure::Refused << failed;
}

void TestVmTftp::follows()
{
    QFETCH(int, size);
    QFETCH(QStringList, answers);
    Rig rig(size, 256, answers.contains(QLatin1String("-")) ? 30ms : 5000ms);
    rig.transfer->startFirmwareUpdates();
    QStringList packets;
    for (const QString &answer : answers) {
        packets.append(rig.nextPacket());
        rig.answer(answer);
    }
    QVERIFY(rig.waitForEnd());
    QTEST(packets, "packets");
    QTEST(rig.progress, "progress");
    QTEST(rig.transfer->failure(), "failure");
    QCOMPARE(rig.error(), rig.transfer->failure() != VmTftp::Failure::None);
    QFETCH(QString, logged);
    QVERIFY2(rig.log.contains(logged), qPrintable(rig.log.join(QLatin1Char('\n'))));
    QVERIFY2(!rig.peer.hasPendingDatagrams(), "a packet after the end");
}

void TestVmTftp::narrates()
{
    Rig rig(300);
    rig.transfer->sendFileName();
    for (const char *answer : {"a0", "a1", "a2"}) {
        QVERIFY(!rig.nextPacket().isEmpty());
        rig.answer(QLatin1String(answer));
    }
    QVERIFY(rig.waitForEnd());
    QCOMPARE(rig.log,
             (QStringList{QStringLiteral("TFTP send file: cue.wav"), ackLine(4, 0, 0),
                          QStringLiteral("Sending packet: sequence 1 of 2"), ackLine(4, 1, 1),
                          QStringLiteral("Sending last packet: sequence 2 of 2"), ackLine(4, 2, 2),
                          QStringLiteral("TFTP Done: error(0)")}));
    QCOMPARE(rig.progress, (QVector<int>{0, 50}));
}

void TestVmTftp::repeatsAWriteRequestUntilCancelled()
{
    Rig rig(300, 512, 5ms);
    rig.transfer->sendFileName();
    for (int sent = 0; sent < 14; ++sent)
        QCOMPARE(rig.nextPacket(), QStringLiteral("2/%1/12").arg(0x6375));
    rig.transfer->cancelFirmwareUpdates();
    QVERIFY(rig.waitForEnd());
    QVERIFY(!rig.error());
}

void TestVmTftp::ignoresForeignSenders_data()
{
    QTest::addColumn<QString>("sender");
    QTest::addColumn<bool>("heard");
    QTest::newRow("the peer") << QStringLiteral("127.0.0.1") << true;
    QTest::newRow("the peer, written as IPv6") << QStringLiteral("::ffff:127.0.0.1") << true;
    QTest::newRow("another host") << QStringLiteral("127.0.0.2") << false;
    QTest::newRow("not IPv4") << QStringLiteral("::1") << false;
}

void TestVmTftp::ignoresForeignSenders()
{
    QFETCH(QString, sender);
    Rig rig(1);
    rig.transfer->startFirmwareUpdates();
    QCOMPARE(rig.nextPacket(), QStringLiteral("3/1/1"));
    QHostAddress address(sender);
    rig.transfer->handleDataGram(address, QByteArray::fromHex("00040001"));
    QTEST(rig.log.contains(ackLine(4, 1, 1)), "heard");
}

void TestVmTftp::reportsADoubledLastAcknowledgementOnce()
{
    Rig rig(300);
    rig.transfer->startFirmwareUpdates();
    QVERIFY(!rig.nextPacket().isEmpty());
    rig.answer(QStringLiteral("a1"));
    QCOMPARE(rig.nextPacket(), QStringLiteral("3/2/44"));
    rig.transfer->processAck(4, 2);
    rig.transfer->processAck(4, 2);
    QVERIFY(rig.waitForEnd());
    QVERIFY(!rig.error());
    QVERIFY2(!rig.finished->wait(20), "a second end");
    QVERIFY2(!rig.peer.hasPendingDatagrams(), "a packet after the end");
}

void TestVmTftp::outlivesAPeerThatIsAwayForAWhile()
{
    Rig rig(1, 256, 20ms);
    const quint16 port = rig.peer.localPort();
    rig.peer.close();
    rig.transfer->startFirmwareUpdates();
    QTRY_VERIFY(rig.log.contains(timeoutLine(1, 2)));
    QVERIFY(rig.peer.bind(QHostAddress::LocalHost, port));
    QCOMPARE(rig.nextPacket(), QStringLiteral("3/1/1"));
    rig.answer(QStringLiteral("a1"));
    QVERIFY(rig.waitForEnd());
    QVERIFY(!rig.error());
}

void TestVmTftp::failsAtOnceWhenItCannotStart_data()
{
    QTest::addColumn<int>("size");
    QTest::addColumn<int>("blockSize");
    QTest::addColumn<QString>("peer");
    QTest::addColumn<VmTftp::Failure>("failure");
    QTest::newRow("65536 blocks") << 65535 << 1 << QStringLiteral("127.0.0.1") << VmTftp::Failure::TooLong;
    QTest::newRow("no way to the peer")
        << 10 << 256 << QStringLiteral("203.0.113.1") << VmTftp::Failure::NotSent;
    QTest::newRow("block longer than a datagram")
        << 70000 << 66000 << QStringLiteral("127.0.0.1") << VmTftp::Failure::NotSent;
}

void TestVmTftp::failsAtOnceWhenItCannotStart()
{
    QFETCH(int, size);
    QFETCH(int, blockSize);
    QFETCH(QString, peer);
    VmTftp transfer(blockSize, QString(), pattern(size), QHostAddress(peer), 9, nullptr);
    QSignalSpy finished(&transfer, &VmTftp::finishedUpdates);
    QElapsedTimer clock;
    clock.start();
    transfer.setUp();
    transfer.startFirmwareUpdates();
    QVERIFY(finished.wait(2000));
    QVERIFY2(clock.elapsed() < 1000, "the window would have stood still");
    QCOMPARE(finished.first().at(0).toBool(), true);
    QTEST(transfer.failure(), "failure");
}

QTEST_GUILESS_MAIN(TestVmTftp)
#include "tst_vm_tftp.moc"
