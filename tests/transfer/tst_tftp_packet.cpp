#include "transfer/tftp_packet.h"

#include <QTest>

class TestTftpPacket : public QObject
{
    Q_OBJECT

private slots:
    void builds_data();
    void builds();
    void reads_data();
    void reads();
    void countsBlocks_data();
    void countsBlocks();
};

void TestTftpPacket::builds_data()
{
    QTest::addColumn<QByteArray>("packet");
    QTest::addColumn<QByteArray>("hex");
    const QString name = QStringLiteral("B\u00fc.wav");
    QTest::newRow("write request of the device")
        << tftp::writeRequest(name, 256) << QByteArray("0002000042fc2e7761760000");
    QTest::newRow("write request of RFC 1350")
        << tftp::writeRequest(name, 512) << QByteArray("000242fc2e776176006f6374657400");
    QTest::newRow("data") << tftp::dataPacket(0x1234, QByteArray("a\0z", 3)) << QByteArray("0003123461007a");
    QTest::newRow("empty last block") << tftp::dataPacket(65535, {}) << QByteArray("0003ffff");
}

void TestTftpPacket::builds()
{
    QFETCH(QByteArray, packet);
    QTEST(packet.toHex(), "hex");
}

void TestTftpPacket::reads_data()
{
    QTest::addColumn<QByteArray>("hex");
    QTest::addColumn<int>("opcode");
    QTest::addColumn<int>("number");
    QTest::addColumn<bool>("refusal");
    QTest::newRow("acknowledgement") << QByteArray("0004fffe") << 4 << 0xfffe << false;
    QTest::newRow("read request") << QByteArray("00016100") << 1 << 0x6100 << false;
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

void TestTftpPacket::countsBlocks_data()
{
    QTest::addColumn<int>("size");
    QTest::addColumn<int>("blockSize");
    QTest::addColumn<bool>("fits");
    QTest::newRow("the short block is number 65535") << 65535 * 256 - 1 << 256 << true;
    QTest::newRow("the empty block would be number 65536") << 65535 * 256 << 256 << false;
    QTest::newRow("nothing") << 0 << 256 << true;
    QTest::newRow("no block size") << 1 << 0 << false;
}

void TestTftpPacket::countsBlocks()
{
    QFETCH(int, size);
    QFETCH(int, blockSize);
    QTEST(tftp::fits(size, blockSize), "fits");
}

QTEST_GUILESS_MAIN(TestTftpPacket)
#include "tst_tftp_packet.moc"
