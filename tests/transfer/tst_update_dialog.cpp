#include "host/px_device.h"
#include "tests/support/box_answerer.h"
#include "tests/transfer/tftp_client.h"
#include "transfer/dev_list.h"
#include "transfer/local_address.h"
#include "transfer/progress_bar_delegate.h"
#include "transfer/update_dialog.h"
#include "transfer/update_texts.h"

#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QSignalSpy>
#include <QTableView>
#include <QTest>

using namespace std::chrono_literals;

namespace {

/// The dialog as the editor opens it, with time-outs that a test can wait for.
class Opened
{
public:
    explicit Opened(int size, const QString &file = QStringLiteral("/home/me/ding.wav"))
        : m_dialog(new UpdateDialog)
    {
        UpdateDialog::Intervals intervals;
        intervals.start = 150ms;
        intervals.transfer.packetTimeout = 20ms;
        m_dialog->setIntervals(intervals);
        m_device.setName(QStringLiteral("Studio A"));
        m_dialog->setDevice(&m_device);
        m_dialog->setFile(file, pattern(size));
        m_dialog->show();
    }

    UpdateDialog *operator->() const { return m_dialog.data(); }
    UpdateDialog *get() const { return m_dialog.data(); }
    void destroy() { m_dialog.reset(); }
    QString status() const { return m_dialog->findChild<QLabel *>(QStringLiteral("status_label"))->text(); }
    QPushButton *close() const
    {
        return m_dialog->findChild<QPushButton *>(QStringLiteral("close_pushButton"));
    }
    QTableView *table() const { return m_dialog->findChild<QTableView *>(QStringLiteral("tableView")); }
    int progress() const { return m_dialog->findChild<DevList *>()->deviceAt(0)->progress(); }
    int transfers() const { return m_dialog->findChildren<VmTftp *>().size(); }

private:
    pxDevice m_device;
    QScopedPointer<UpdateDialog> m_dialog;
};

const QHostAddress server(QStringLiteral("127.0.0.2"));

} // namespace

class TestUpdateDialog : public QObject
{
    Q_OBJECT

private slots:
    void looks();
    void offersTheFileBeyondTheStartWait();
    void keepsCloseShutWhileSending_data();
    void keepsCloseShutWhileSending();
    void saysWhatFailed_data();
    void saysWhatFailed();
    void refusesToServeAnEmptyFile();
    void canBeDestroyedUnderItsMessage();
    void servesOnlyTheFirstRequest();
    void tellsASecondDialogThatThePortIsTaken();
    void namesTheCommandThatPermitsThePort();
    void listsDevicesByName();
    void paintsProgressInTheDialogsStyle();
    void choosesTheLocalAddress_data();
    void choosesTheLocalAddress();
};

void TestUpdateDialog::looks()
{
    Opened dialog(10);
    const auto text
        = [&](const char *name) { return dialog->findChild<QLabel *>(QLatin1String(name))->text(); };
    QCOMPARE(dialog->windowTitle(), QStringLiteral("tarnKBX Voice Cue Update"));
    QCOMPARE(dialog->size(), QSize(675, 280));
    QCOMPARE(text("lbl_FirmwareIamge"), QStringLiteral("Voice Cue Image:"));
    QCOMPARE(text("img_filename_label"), QStringLiteral("ding.wav"));
    QTableView *table = dialog.table();
    QVERIFY(table->horizontalHeader()->isHidden() && table->verticalHeader()->isHidden());
    QVERIFY(table->horizontalHeader()->stretchLastSection() && !table->showGrid());
    QCOMPARE(table->columnWidth(0), 25);
    QCOMPARE(table->columnWidth(1), 250);
    QVERIFY(qobject_cast<ProgressBarDelegate *>(table->itemDelegateForColumn(2)));
    QCOMPARE(table->selectionBehavior(), QAbstractItemView::SelectRows);
    QCOMPARE(UpdateDialog().findChild<QLabel *>(QStringLiteral("img_filename_label"))->text(),
             QStringLiteral("<EMPTY>"));
}

void TestUpdateDialog::offersTheFileBeyondTheStartWait()
{
    Opened dialog(300);
    QCOMPARE(dialog.status(), updatetexts::waiting());
    QSignalSpy given(dialog.get(), &UpdateDialog::signalTftpDone);
    QVERIFY(given.wait(2000));
    QCOMPARE(dialog.status(), updatetexts::notAskedYet());
    QVERIFY(dialog.close()->isEnabled());
    TftpClient late;
    QSignalSpy fetched(&late, &TftpClient::finished);
    late.fetch(server);
    QVERIFY(fetched.wait(2000));
    QTRY_COMPARE(dialog.status(), updatetexts::finished(300));
    QCOMPARE(given.size(), 2);
    QCOMPARE(dialog.progress(), 50);
    QSignalSpy closed(dialog.get(), &QDialog::finished);
    QTest::mouseClick(dialog.close(), Qt::LeftButton);
    QCOMPARE(closed.value(0).value(0).toInt(), 0);
}

void TestUpdateDialog::keepsCloseShutWhileSending_data()
{
    QTest::addColumn<int>("how");
    QTest::newRow("Escape") << 0;
    QTest::newRow("title bar") << 1;
    QTest::newRow("destroyed by its owner") << 2;
}

void TestUpdateDialog::keepsCloseShutWhileSending()
{
    QFETCH(int, how);
    Opened dialog(100000);
    TftpClient device;
    QSignalSpy blocks(&device, &TftpClient::blockArrived);
    device.fetch(server);
    QTRY_VERIFY(dialog.progress() >= 2);
    QVERIFY(dialog.status().contains(QStringLiteral("127.0.0.1: %1 %").arg(dialog.progress())));
    QVERIFY(!dialog.close()->isEnabled());
    QTest::mouseClick(dialog.close(), Qt::LeftButton);
    QVERIFY(dialog->isVisible());
    if (how == 0)
        QTest::keyClick(dialog.get(), Qt::Key_Escape);
    else if (how == 1)
        dialog->close();
    if (how != 2)
        QVERIFY(!dialog->isVisible() && dialog->result() == 0);
    dialog.destroy();
    QVERIFY2(QUdpSocket().bind(QHostAddress::AnyIPv4, 69, QUdpSocket::DontShareAddress),
             "the port is not free again");
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
    QFETCH(VmTftp::Failure, failure);
    Opened dialog(size);
    TftpClient device;
    QFETCH(QByteArray, answer);
    device.stubbornAnswer = answer;
    device.fetch(server);
    QTRY_COMPARE(dialog.status(), updatetexts::failed(failure));
    QVERIFY(dialog.close()->isEnabled());
    QCOMPARE(dialog.progress(), 0);
}

void TestUpdateDialog::refusesToServeAnEmptyFile()
{
    Opened dialog(0);
    support::BoxAnswerer answerer(QMessageBox::Ok);
    QPoint offset(1000, 1000);
    answerer.setWhileOpen([&] {
        offset
            = QApplication::activeModalWidget()->frameGeometry().center() - dialog->frameGeometry().center();
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
    Opened dialog(0);
    support::BoxAnswerer answerer(QMessageBox::Ok);
    answerer.setWhileOpen([&] { dialog.destroy(); });
    TftpClient device;
    device.fetch(server);
    QTRY_COMPARE(answerer.seen().size(), 1);
    QTRY_VERIFY(!QApplication::activeModalWidget());
}

void TestUpdateDialog::servesOnlyTheFirstRequest()
{
    Opened dialog(20000);
    QUdpSocket stray;
    for (const QByteArray &noRequest : {QByteArray(), QByteArray("\0", 1), QByteArray("\0\2x", 3)})
        stray.writeDatagram(noRequest, server, 69);
    TftpClient first;
    TftpClient second;
    QSignalSpy fetched(&first, &TftpClient::finished);
    QSignalSpy disturbed(&second, &TftpClient::blockArrived);
    first.fetch(server);
    QTRY_COMPARE(dialog.transfers(), 1);
    second.fetch(server);
    QVERIFY(fetched.wait(5000));
    QCOMPARE(first.content(), pattern(20000));
    QVERIFY(disturbed.isEmpty());
    QCOMPARE(dialog.transfers(), 1);
}

void TestUpdateDialog::tellsASecondDialogThatThePortIsTaken()
{
    Opened first(300);
    Opened second(600);
    QVERIFY2(second.status().contains(QStringLiteral("port 69 is in use")), qPrintable(second.status()));
    TftpClient device;
    QSignalSpy fetched(&device, &TftpClient::finished);
    device.fetch(server);
    QVERIFY(fetched.wait(2000));
    QCOMPARE(device.content(), pattern(300));
    QSignalSpy waited(second.get(), &UpdateDialog::signalTftpDone);
    QVERIFY(waited.wait(2000));
    QVERIFY2(second.status().contains(QStringLiteral("port 69 is in use")),
             "the start wait hides the reason");
}

void TestUpdateDialog::namesTheCommandThatPermitsThePort()
{
    QVERIFY(updatetexts::portClosed(QAbstractSocket::SocketAccessError, QString())
                .contains(QStringLiteral("sudo sysctl -w net.ipv4.ip_unprivileged_port_start=69")));
}

void TestUpdateDialog::listsDevicesByName()
{
    DevList list;
    QSignalSpy reset(&list, &DevList::modelReset);
    for (const char *name : {"b", "a", "b"})
        list.addDevice(QLatin1String(name));
    QCOMPARE(reset.size(), 3);
    QCOMPARE(list.rowCount(), 2);
    QCOMPARE(list.columnCount(), 3);
    const auto shown = [&](int row, int column, int role = Qt::DisplayRole) {
        return list.data(list.index(row, column), role);
    };
    QCOMPARE(shown(0, 1), QVariant(QStringLiteral("a")));
    QCOMPARE(shown(1, 1), QVariant(QStringLiteral("b")));
    QVERIFY(!shown(0, 0).isValid() && !shown(0, 2).isValid() && !shown(0, 1, Qt::DecorationRole).isValid());
    QCOMPARE(shown(0, 0, Qt::DecorationRole).type(), QVariant::Icon);
    QCOMPARE(list.headerData(1, Qt::Horizontal), QVariant(QStringLiteral("Device Name")));
    QCOMPARE(list.headerData(2, Qt::Horizontal), QVariant(QStringLiteral("Progress")));
    QVERIFY(!shown(1, 1, Qt::ForegroundRole).isValid());
    list.device(QStringLiteral("b"))->setState(2);
    QCOMPARE(shown(1, 1, Qt::ForegroundRole).value<QColor>(), QColor(Qt::red));
}

void TestUpdateDialog::paintsProgressInTheDialogsStyle()
{
    Opened dialog(300);
    dialog->setStyleSheet(
        QStringLiteral("QProgressBar { border: 0; } QProgressBar::chunk { background: #ff7707; }"));
    dialog->findChild<DevList *>()->deviceAt(0)->setProgress(50);
    QTableView *table = dialog.table();
    const QRect cell = table->visualRect(table->model()->index(0, 2));
    const QImage image = table->viewport()->grab().toImage();
    const auto colorAt = [&](double share) {
        return image.pixelColor(cell.left() + int(share * cell.width()), cell.top() + 2);
    };
    QCOMPARE(colorAt(0.01), QColor(0xff7707));
    QCOMPARE(colorAt(0.48), QColor(0xff7707));
    QVERIFY(colorAt(0.52) != QColor(0xff7707));
}

void TestUpdateDialog::choosesTheLocalAddress_data()
{
    QTest::addColumn<QStringList>("addresses");
    QTest::addColumn<QString>("chosen");
    const QString none;
    QTest::newRow("first that is not 127.0.0.1")
        << QStringList{QStringLiteral("fe80::1"), QStringLiteral("127.0.0.1"), QStringLiteral("10.0.0.7"),
                       QStringLiteral("10.0.0.8")}
        << QStringLiteral("10.0.0.7");
    QTest::newRow("another loopback address")
        << QStringList{QStringLiteral("127.0.0.2")} << QStringLiteral("127.0.0.2");
    QTest::newRow("none") << QStringList{QStringLiteral("127.0.0.1"), QStringLiteral("::1")} << none;
}

void TestUpdateDialog::choosesTheLocalAddress()
{
    QFETCH(QStringList, addresses);
    QList<QNetworkAddressEntry> entries;
    for (const QString &address : addresses) {
        entries.append(QNetworkAddressEntry());
        entries.last().setIp(QHostAddress(address));
    }
    QTEST(firstReachableAddress(entries).toString(), "chosen");
    const QList<QNetworkInterface> interfaces = QNetworkInterface::allInterfaces();
    QCOMPARE(localAddress(interfaces, QNetworkInterface::interfaceIndexFromName(QStringLiteral("lo"))),
             server);
    QVERIFY(localAddress(interfaces, 9999).isNull());
}

QTEST_MAIN(TestUpdateDialog)
#include "tst_update_dialog.moc"
