#include "tests/support/box_answerer.h"
#include "tests/transfer/opened_dialog.h"
#include "transfer/local_address.h"

#include <QHeaderView>
#include <QSignalSpy>
#include <QTest>

using namespace std::chrono_literals;

using Leave = std::function<void(UpdateDialog *)>;
Q_DECLARE_METATYPE(Leave)

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
    void showsDeviceAndFile();
    void offersTheFileBeyondTheStartWait();
    void endsTheTransferWhenItGoes_data();
    void endsTheTransferWhenItGoes();
    void saysWhatFailed_data();
    void saysWhatFailed();
    void refusesToServeAnEmptyFile();
    void canBeDestroyedUnderItsMessage();
    void servesOnlyTheFirstRequest();
    void tellsASecondDialogThatThePortIsTaken();
    void choosesTheLocalAddress();
};

void TestUpdateDialog::showsDeviceAndFile()
{
    OpenedDialog dialog(10);
    QCOMPARE(dialog->windowTitle(), QStringLiteral("tarnKBX Voice Cue Update"));
    QCOMPARE(dialog->size(), QSize(675, 280));
    QCOMPARE(dialog.label("img_filename_label"), QStringLiteral("ding.wav"));
    QCOMPARE(dialog.table()->model()->index(0, 1).data().toString(), QStringLiteral("Studio A"));
    QVERIFY(dialog.table()->horizontalHeader()->isHidden() && dialog.table()->verticalHeader()->isHidden());
    QCOMPARE(dialog.table()->columnWidth(0), 25);
    QCOMPARE(dialog.table()->columnWidth(1), 250);
}

void TestUpdateDialog::offersTheFileBeyondTheStartWait()
{
    const int size = 99 * 256; // the last block ends at 100 % in double precision, at 99 % in single
    OpenedDialog dialog(size, brief());
    QCOMPARE(dialog.status(), updatetexts::waiting());
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
    QTest::addColumn<Leave>("leave");
    QTest::newRow("Escape") << Leave([](UpdateDialog *dialog) { QTest::keyClick(dialog, Qt::Key_Escape); });
    QTest::newRow("title bar") << Leave([](UpdateDialog *dialog) { dialog->close(); });
    QTest::newRow("destroyed") << Leave([](UpdateDialog *dialog) { dialog->setResult(0); });
}

void TestUpdateDialog::endsTheTransferWhenItGoes()
{
    QFETCH(Leave, leave);
    OpenedDialog dialog(100000);
    TftpClient device;
    QSignalSpy blocks(&device, &TftpClient::blockArrived);
    device.fetch(server);
    QTRY_VERIFY(dialog.row()->progress() >= 2);
    QVERIFY(dialog.status().contains(QStringLiteral("127.0.0.1: %1 %").arg(dialog.row()->progress())));
    QVERIFY(!dialog.close()->isEnabled());
    QTest::mouseClick(dialog.close(), Qt::LeftButton);
    QVERIFY2(dialog->isVisible(), "Close does not work yet");
    leave(dialog.get());
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

void TestUpdateDialog::refusesToServeAnEmptyFile()
{
    OpenedDialog dialog(0);
    dialog->move(20, 30);
    support::BoxAnswerer answerer(QMessageBox::Ok);
    QPoint offset(1000, 1000);
    answerer.setWhileOpen([&] {
        offset
            = QApplication::activeModalWidget()->frameGeometry().center() - dialog->frameGeometry().center();
        QMetaObject::invokeMethod(dialog.get(), "handleTimeout"); // an impatient device asks again
    });
    QSignalSpy closed(dialog.get(), &QDialog::finished);
    TftpClient device;
    device.fetch(server);
    QVERIFY(closed.wait(3000));
    QCOMPARE(closed.first().first().toInt(), 0);
    QCOMPARE(answerer.seen().size(), 1);
    QCOMPARE(answerer.seen().first().title, QStringLiteral("Failed to update the image"));
    QCOMPARE(answerer.seen().first().text,
             QStringLiteral("There was a failure in updating the voice cue wav file."));
    QCOMPARE(answerer.seen().first().buttons, QStringList(QStringLiteral("OK")));
    QVERIFY2(offset.manhattanLength() <= 2, "the message is not centred on the dialog");
    QCOMPARE(dialog.transfers(), 0);
}

void TestUpdateDialog::canBeDestroyedUnderItsMessage()
{
    OpenedDialog dialog(0);
    support::BoxAnswerer answerer(QMessageBox::Ok);
    bool left = true;
    answerer.setWhileOpen([&] {
        dialog.destroy();
        left = QApplication::activeModalWidget();
    });
    TftpClient device;
    device.fetch(server);
    QTRY_COMPARE(answerer.seen().size(), 1);
    QVERIFY2(!left, "the message outlives its dialog");
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
    OpenedDialog second(600, brief());
    QSignalSpy gaveUpWaiting(second.get(), &UpdateDialog::signalTftpDone);
    const QString inUse = updatetexts::portClosed(QAbstractSocket::AddressInUseError, QString());
    QCOMPARE(second.status(), inUse);
    QVERIFY(updatetexts::portClosed(QAbstractSocket::SocketAccessError, QString())
                .contains(QStringLiteral("sudo sysctl -w net.ipv4.ip_unprivileged_port_start=69")));
    TftpClient device;
    device.fetch(server);
    QTRY_COMPARE(first.status(), updatetexts::finished(300));
    QTRY_VERIFY(!gaveUpWaiting.isEmpty());
    QCOMPARE(second.status(), inUse);
}

void TestUpdateDialog::choosesTheLocalAddress()
{
    QList<QNetworkAddressEntry> entries;
    for (const QString &address : words("fe80::1 127.0.0.1 10.0.0.7 10.0.0.8")) {
        QNetworkAddressEntry entry;
        entry.setIp(QHostAddress(address));
        entries.append(entry);
    }
    QCOMPARE(firstReachableAddress(entries), QHostAddress(QStringLiteral("10.0.0.7")));
    QVERIFY(firstReachableAddress(entries.mid(0, 2)).isNull());
    const QList<QNetworkInterface> interfaces = QNetworkInterface::allInterfaces();
    QCOMPARE(localAddress(interfaces, QNetworkInterface::interfaceIndexFromName(QStringLiteral("lo"))),
             server);
    QVERIFY(localAddress(interfaces, 9999).isNull());
}

QTEST_MAIN(TestUpdateDialog)
#include "tst_update_dialog.moc"
