#include "transfer/tftp_packet.h"

#include <QTest>

class TestTftpPacket : public QObject
{
    Q_OBJECT

private slots:
    void builds();
    void reads_data();
    void reads();
    void countsBlocks();
};

void TestTftpPacket::builds()
{
    const QString name = QStringLiteral("B\u00fc.wav");
    QCOMPARE(tftp::writeRequest(name, 256).toHex(), QByteArray("0002000042fc2e7761760000"));
    QCOMPARE(tftp::writeRequest(name, 512).toHex(), QByteArray("000242fc2e776176006f6374657400"));
    QCOMPARE(tftp::dataPacket(0x1234, QByteArray("a\0z", 3)).toHex(), QByteArray("0003123461007a"));
    QCOMPARE(tftp::dataPacket(65535, {}).toHex(), QByteArray("0003ffff"));
}

void TestTftpPacket::reads_data()
{
    QTest::addColumn<QByteArray>("hex");
    QTest::addColumn<int>("opcode");
    QTest::addColumn<int>("number");
    QTest::addColumn<bool>("refusal");
    QTest::newRow("acknowledgement") << QByteArray("0004fffe") << 4 << 0xfffe << false;
    QTest::newRow("empty") << QByteArray() << 0 << 0 << false;
    QTest::newRow("one byte") << QByteArray("04") << 0 << 0 << false;
    QTest::newRow("no block number") << QByteArray("000401") << 4 << 0 << false;
    QTest::newRow("refused in an error packet") << QByteArray("000500004e41434b00") << 5 << 0 << true;
    QTest::newRow("refusal is upper case") << QByteArray("000500006e61636b00") << 5 << 0 << false;
}

void TestTftpPacket::reads()
{
    QFETCH(QByteArray, hex);
    const QByteArray datagram = QByteArray::fromHex(hex);
    QTEST(int(tftp::opcode(datagram)), "opcode");
    QTEST(int(tftp::blockNumber(datagram)), "number");
    QTEST(tftp::isRefusal(datagram), "refusal");
}

void TestTftpPacket::countsBlocks()
{
    QVERIFY(tftp::fits(65535 * 256 - 1, 256));
    QVERIFY2(!tftp::fits(65535 * 256, 256), "the closing empty block has no number left");
    QVERIFY(tftp::fits(0, 256));
    QVERIFY(!tftp::fits(1, 0));
}

QTEST_GUILESS_MAIN(TestTftpPacket)
#include "tst_tftp_packet.moc"
