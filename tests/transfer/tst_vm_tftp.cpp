#include "tests/support/tftp_peer.h"
#include "transfer/vm_tftp.h"

#include <QSignalSpy>
#include <QTest>

using namespace std::chrono_literals;
using support::pattern;
using support::words;
using Failure = VmTftp::Failure;

namespace {

/// A transfer to a peer that the test plays by hand; it notes what either side sees.
struct Rig
{
    explicit Rig(int size, int blockSize = 256, std::chrono::milliseconds timeout = 5s)
        : transfer(blockSize, QStringLiteral("cue.wav"), pattern(size), peer.localAddress(), peer.localPort(),
                   nullptr)
    {
        VmTftp::Intervals intervals;
        intervals.packetTimeout = timeout;
        transfer.setIntervals(intervals);
        QObject::connect(&transfer, &VmTftp::logData, [this](const QString &line) { log += line; });
        QObject::connect(&transfer, &VmTftp::progress, [this](int now) { progress += QString::number(now); });
        transfer.setUp();
    }

    /// Until the end is reported and whatever was to come one step later has come as well.
    bool waitForEnd()
    {
        if (finished.isEmpty() && !finished.wait(5000))
            return false;
        bool later = false;
        QTimer::singleShot(2, [&later] { later = true; });
        return QTest::qWaitFor([&later] { return later; });
    }

    support::TftpPeer peer;
    VmTftp transfer;
    QSignalSpy finished{&transfer, &VmTftp::finishedUpdates};
    QStringList log;
    QStringList progress;
};

QString ackLine(int opcode, int got, int expected)
{
    const auto line = QStringLiteral("TFTP handle ACK (%1) - sequence: (%2) - Expected sequence: (%3)");
    return line.arg(opcode).arg(got).arg(expected);
}

QString timeoutLine(int sequence, int retry)
{
    return QStringLiteral("TFTP timeout: for sequence (%1) retrying %2 of 10").arg(sequence).arg(retry);
}

} // namespace

class VmTftpTest : public QObject
{
    Q_OBJECT

private slots:
    void follows_data();
    void follows();
    void asksToWrite_data();
    void asksToWrite();
    void ignoresForeignSenders();
    void failsAtOnceWithoutAWayToThePeer();
};

void VmTftpTest::follows_data()
{
    QTest::addColumn<int>("size");
    QTest::addColumn<QStringList>("answers");
    QTest::addColumn<QStringList>("packets");
    QTest::addColumn<QStringList>("progress");
    QTest::addColumn<Failure>("failure");
    QTest::addColumn<QString>("logged");
    const auto row
        = [](const char *name, int size, const char *answers, const char *packets, const char *progress,
             const QString &logged = QStringLiteral("TFTP Done: error(0)"), Failure failure = Failure::None) {
              QTest::newRow(name) << size << words(answers) << words(packets) << words(progress) << failure
                                  << logged;
          };
    const QString failed = QStringLiteral("TFTP Done: error(1)");
    row("short last block", 1000, "a1 a2 a3 a4", "3/1/256 3/2/256 3/3/256 3/4/232", "25 50 75");
    row("exact multiple", 512, "a1 a2 a3", "3/1/256 3/2/256 3/3/0", "50 100");
    row("wrong block", 700, "a1 a1 a2 a3", "3/1/256 2*3/2/256 3/3/188", "33 66", ackLine(4, 1, 2));
    row("time-out after a wrong one", 300, "a9 - a1 a2", "3*3/1/256 3/2/44", "50", timeoutLine(1, 2));
    row("error packet", 1, "000500010000 a1", "2*3/1/1", "", ackLine(5, 1, 1));
    row("short datagrams stand in nobody's way", 1, "+00+000400+a1", "3/1/1", "");
    row("last acknowledgement doubled", 1, "a1+a1", "3/1/1", "");
    row("ten time-outs", 1, "10*- a1", "11*3/1/1", "");
    row("eleven time-outs", 1, "11*-", "11*3/1/1", "", failed, Failure::NoAnswer);
    row("success forgets time-outs", 300, "6*- a1 6*- a2", "7*3/1/256 7*3/2/44", "50", timeoutLine(2, 1));
    row("too many wrong ones", 1, "12*a7", "12*3/1/1", "", QStringLiteral("Retries exceeded for transfer..."),
        Failure::NoAnswer);
    row("refused", 300, "a1 0005000000004e41434b", "3/1/256 3/2/44", "50", failed, Failure::Refused);
}

void VmTftpTest::follows()
{
    QFETCH(int, size);
    QFETCH(QStringList, answers);
    QFETCH(QString, logged);
    Rig rig(size, 256, answers.contains(QLatin1String("-")) ? 30ms : 5000ms);
    rig.transfer.startFirmwareUpdates();
    QStringList packets;
    for (const QString &answer : answers) {
        packets.append(rig.peer.take());
        rig.peer.answer(answer);
    }
    QVERIFY(rig.waitForEnd());
    QTEST(packets, "packets");
    QTEST(rig.progress, "progress");
    QTEST(rig.transfer.failure(), "failure");
    QCOMPARE(rig.finished.size(), 1);
    QCOMPARE(rig.finished.first().first().toBool(), rig.transfer.failure() != Failure::None);
    QVERIFY2(rig.log.contains(logged), qPrintable(rig.log.join(QLatin1Char('\n'))));
    QVERIFY2(!rig.peer.hasPendingDatagrams(), "a packet after the end");
}

void VmTftpTest::asksToWrite_data()
{
    QTest::addColumn<int>("blockSize");
    QTest::addColumn<QByteArray>("request");
    QTest::newRow("as in RFC 1350") << 512 << QByteArray("\0\2cue.wav\0octet\0", 16);
    QTest::newRow("as the device takes it") << 256 << QByteArray("\0\2\0\0cue.wav\0\0", 13);
}

/// The request is repeated more often than a block would be, until it is answered or called off.
void VmTftpTest::asksToWrite()
{
    QFETCH(int, blockSize);
    QFETCH(QByteArray, request);
    Rig rig(blockSize - 1, blockSize, 5ms);
    rig.transfer.sendFileName();
    for (int sent = 0; sent < 14; ++sent) {
        rig.peer.take();
        QCOMPARE(rig.peer.packet(), request);
    }
    rig.transfer.cancelFirmwareUpdates();
    QVERIFY(rig.waitForEnd());
    QCOMPARE(rig.finished.first().first().toBool(), false);
    while (rig.peer.hasPendingDatagrams())
        rig.peer.take();
    rig.transfer.sendFileName();
    rig.peer.take();
    rig.peer.answer(QStringLiteral("a0"));
    QTRY_COMPARE(rig.peer.take(), QStringLiteral("3/1/%1").arg(blockSize - 1));
}

void VmTftpTest::ignoresForeignSenders()
{
    Rig rig(1);
    rig.transfer.startFirmwareUpdates();
    QCOMPARE(rig.peer.take(), QStringLiteral("3/1/1"));
    for (const QString &sender : words("127.0.0.2 ::1 ::ffff:127.0.0.1")) {
        QVERIFY2(!rig.log.contains(ackLine(4, 1, 1)), "a foreign sender was heard");
        QHostAddress address(sender);
        rig.transfer.handleDataGram(address, QByteArray::fromHex("00040001"));
    }
    QVERIFY2(rig.log.contains(ackLine(4, 1, 1)), "the peer, written as IPv6, was not heard");
}

void VmTftpTest::failsAtOnceWithoutAWayToThePeer()
{
    VmTftp transfer(256, QString(), pattern(10), QHostAddress(QStringLiteral("203.0.113.1")), 9, nullptr);
    QSignalSpy finished(&transfer, &VmTftp::finishedUpdates);
    transfer.setUp();
    transfer.startFirmwareUpdates();
    QVERIFY2(finished.wait(1000), "the window would have stood still");
    QCOMPARE(finished.first().at(0).toBool(), true);
    QCOMPARE(transfer.failure(), Failure::NotSent);
}

QTEST_GUILESS_MAIN(VmTftpTest)
#include "tst_vm_tftp.moc"
