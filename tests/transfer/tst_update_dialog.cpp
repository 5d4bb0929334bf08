#include "tests/support/box_answerer.h"
#include "tests/transfer/opened_dialog.h"
#include "transfer/local_address.h"

#include <QSignalSpy>
#include <QTest>

using namespace std::chrono_literals;

namespace {

/// Time-outs that a test can wait for.
UpdateDialog::Intervals brief()
{
    UpdateDialog::Intervals intervals;
    intervals.start = 150ms;
    intervals.transfer.packetTimeout = 20ms;
    return intervals;
}

} // namespace

class TestUpdateDialog : public QObject
{
    Q_OBJECT

private slots:
    void offersTheFileBeyondTheStartWait();
    void endsTheTransferWhenItGoes_data();
    void endsTheTransferWhenItGoes();
    void saysWhatFailed_data();
    void saysWhatFailed();
    void refusesToServeAnEmptyFile_data();
    void refusesToServeAnEmptyFile();
    void servesOnlyTheFirstRequest();
    void tellsASecondDialogThatThePortIsTaken();
    void choosesAnAddressThatDevicesReach();
};

void TestUpdateDialog::offersTheFileBeyondTheStartWait()
{
    const int size = 99 * 256; // the last block ends at 100 % in double precision, at 99 % in single
    OpenedDialog dialog(size, brief());
    QCOMPARE(dialog.status(), updatetexts::waiting());
    QCOMPARE(dialog.table()->model()->index(0, 1).data().toString(), QStringLiteral("Studio A"));
    QSignalSpy given(dialog.get(), &UpdateDialog::signalTftpDone);
    QVERIFY(given.wait(2000));
    QCOMPARE(dialog.status(), updatetexts::notAskedYet());
    QVERIFY(dialog.close()->isEnabled());
    TftpClient late;
    late.fetch(server);
    QTRY_COMPARE(dialog.status(), updatetexts::finished(size));
    QCOMPARE(given.size(), 2);
    QCOMPARE(dialog.row()->progress(), 99);
    QSignalSpy closed(dialog.get(), &QDialog::finished);
    QTest::mouseClick(dialog.close(), Qt::LeftButton);
    QCOMPARE(closed.value(0).value(0).toInt(), 0);
}

void TestUpdateDialog::endsTheTransferWhenItGoes_data()
{
    QTest::addColumn<bool>("byEscape");
    QTest::newRow("Escape") << true;
    QTest::newRow("destroyed") << false;
}

void TestUpdateDialog::endsTheTransferWhenItGoes()
{
    QFETCH(bool, byEscape);
    OpenedDialog dialog(100000);
    TftpClient device;
    QSignalSpy blocks(&device, &TftpClient::blockArrived);
    device.fetch(server);
    QTRY_VERIFY(dialog.row()->progress() >= 2);
    QVERIFY(dialog.status().contains(QStringLiteral("127.0.0.1: %1 %").arg(dialog.row()->progress())));
    QVERIFY(!dialog.close()->isEnabled());
    QTest::mouseClick(dialog.close(), Qt::LeftButton);
    QVERIFY2(dialog->isVisible(), "Close does not work yet");
    if (byEscape)
        QTest::keyClick(dialog.get(), Qt::Key_Escape);
    QCOMPARE(dialog->result(), 0);
    dialog.destroy();
    QVERIFY2(QUdpSocket().bind(QHostAddress::AnyIPv4, 69, QUdpSocket::DontShareAddress),
             "the port is still taken");
    while (blocks.wait(50)) // what was on its way
        continue;
    QVERIFY(device.content().size() < 100000);
}

void TestUpdateDialog::saysWhatFailed_data()
{
    QTest::addColumn<int>("size");
    QTest::addColumn<QByteArray>("answer");
    QTest::addColumn<VmTftp::Failure>("failure");
    QTest::newRow("refused") << 1000 << QByteArray("\0\5\0\0NACK", 8) << VmTftp::Failure::Refused;
    QTest::newRow("no acknowledgement") << 1000 << QByteArray("\0\3\0\1", 4) << VmTftp::Failure::NoAnswer;
    QTest::newRow("too long") << 65535 * 256 << QByteArray() << VmTftp::Failure::TooLong;
}

void TestUpdateDialog::saysWhatFailed()
{
    QFETCH(int, size);
    QFETCH(QByteArray, answer);
    QFETCH(VmTftp::Failure, failure);
    OpenedDialog dialog(size, brief());
    TftpClient device;
    device.stubbornAnswer = answer;
    device.fetch(server);
    QTRY_COMPARE(dialog.status(), updatetexts::failed(failure));
    QVERIFY(dialog.close()->isEnabled());
    QCOMPARE(dialog.row()->progress(), 0);
}

void TestUpdateDialog::refusesToServeAnEmptyFile_data()
{
    QTest::addColumn<bool>("destroyed");
    QTest::newRow("answered") << false;
    QTest::newRow("destroyed under its message") << true;
}

void TestUpdateDialog::refusesToServeAnEmptyFile()
{
    QFETCH(bool, destroyed);
    OpenedDialog dialog(0);
    QSignalSpy closed(dialog.get(), &QDialog::finished);
    support::BoxAnswerer answerer(QMessageBox::Ok);
    answerer.setWhileOpen([&] {
        QMetaObject::invokeMethod(dialog.get(), "handleTimeout"); // an impatient device asks again
        if (destroyed)
            dialog.destroy();
        QCOMPARE(!QApplication::activeModalWidget(), destroyed);
    });
    TftpClient device;
    device.fetch(server);
    QTRY_COMPARE(answerer.seen().size(), 1);
    QCOMPARE(answerer.seen().first().title, QStringLiteral("Failed to update the image"));
    QCOMPARE(answerer.seen().first().text,
             QStringLiteral("There was a failure in updating the voice cue wav file."));
    QTRY_COMPARE(closed.count(), destroyed ? 0 : 1);
}

void TestUpdateDialog::servesOnlyTheFirstRequest()
{
    OpenedDialog dialog(20000);
    QUdpSocket stray;
    for (const QByteArray &noRequest : {QByteArray(), QByteArray("\0", 1), QByteArray("\0\2x", 3)})
        stray.writeDatagram(noRequest, server, 69);
    TftpClient first;
    TftpClient second;
    QSignalSpy disturbed(&second, &TftpClient::blockArrived);
    first.fetch(server);
    QTRY_COMPARE(dialog.transfers(), 1);
    second.fetch(server);
    QTRY_COMPARE(dialog.status(), updatetexts::finished(20000));
    QVERIFY(first.content() == pattern(20000));
    QVERIFY(disturbed.isEmpty());
    QCOMPARE(dialog.transfers(), 1);
}

void TestUpdateDialog::tellsASecondDialogThatThePortIsTaken()
{
    OpenedDialog first(300);
    OpenedDialog second(600);
    TftpClient device;
    device.fetch(server);
    QTRY_COMPARE(first.status(), updatetexts::finished(300));
    QCOMPARE(second.status(), updatetexts::portClosed(QAbstractSocket::AddressInUseError, QString()));
}

void TestUpdateDialog::choosesAnAddressThatDevicesReach()
{
    QList<QNetworkAddressEntry> entries;
    for (const QString &address : words("fe80::1 127.0.0.1 10.0.0.7 10.0.0.8")) {
        QNetworkAddressEntry entry;
        entry.setIp(QHostAddress(address));
        entries.append(entry);
    }
    QCOMPARE(firstReachableAddress(entries), QHostAddress(QStringLiteral("10.0.0.7")));
    QVERIFY(firstReachableAddress(entries.mid(0, 2)).isNull());
}

QTEST_MAIN(TestUpdateDialog)
#include "tst_update_dialog.moc"
