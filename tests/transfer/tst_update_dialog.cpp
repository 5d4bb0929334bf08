#include "host/px_device.h"
#include "simulator/tftp_fetcher.h"
#include "tests/support/box_answerer.h"
#include "tests/support/tftp_peer.h"
#include "transfer/dev_list.h"
#include "transfer/local_address.h"
#include "transfer/update_dialog.h"
#include "transfer/update_texts.h"

#include <QLabel>
#include <QProcess>
#include <QPushButton>
#include <QSignalSpy>
#include <QTableView>
#include <QTest>

using namespace std::chrono_literals;
using sim::TftpFaultSettings;
using support::pattern;
using Kind = TftpFaultSettings::Kind;

Q_DECLARE_METATYPE(sim::TftpFaultSettings)

namespace {

/// Fetches with Net::TFTP; its engine stays as it is, only the block size it expects is the device's.
const char ForeignClient[] = R"(
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

/// Time-outs that a test can wait for.
UpdateDialog::Intervals brief()
{
    UpdateDialog::Intervals intervals;
    intervals.start = 150ms;
    intervals.transfer.packetTimeout = 20ms;
    return intervals;
}

sim::Intervals deviceIntervals()
{
    sim::Intervals intervals;
    intervals.tftpRequest = 30;
    intervals.tftpAck = 5;
    intervals.tftpAckMost = 40;
    return intervals;
}

/// A WAV file of two samples with 16 bit PCM at 16 kHz.
QByteArray recording(const char *channels)
{
    return QByteArray::fromHex(
               "524946462800000057415645666d74201000000001000100803e0000007d0000020010006461746104"
               "00000031323334")
        .replace(22, 1, channels, 1);
}

/// The update dialog as the editor opens it.
class OpenedDialog
{
public:
    explicit OpenedDialog(const QByteArray &file, const UpdateDialog::Intervals &intervals = {},
                          const QString &deviceAddress = QStringLiteral("127.0.0.1"))
        : m_dialog(new UpdateDialog)
    {
        m_device.setIpAddress(QHostAddress(deviceAddress));
        m_dialog->setIntervals(intervals);
        m_device.setName(QStringLiteral("Studio A"));
        m_dialog->setDevice(&m_device);
        m_dialog->setFile(QStringLiteral("/home/me/ding.wav"), file);
        m_dialog->show();
    }

    UpdateDialog *operator->() const { return m_dialog.data(); }
    UpdateDialog *get() const { return m_dialog.data(); }
    void destroy() { m_dialog.reset(); }
    QLabel *label(const char *name) const { return m_dialog->findChild<QLabel *>(QLatin1String(name)); }
    QString status() const { return label("status_label")->text(); }
    QPushButton *close() const
    {
        return m_dialog->findChild<QPushButton *>(QStringLiteral("close_pushButton"));
    }
    QVariant cell(int column, int role) const
    {
        return m_dialog->findChild<QTableView *>()->model()->index(0, column).data(role);
    }
    int progress() const { return cell(DevList::ProgressColumn, DevList::ProgressRole).toInt(); }

private:
    pxDevice m_device;
    QScopedPointer<UpdateDialog> m_dialog;
};

/// The device's end, which asks at once.
class Device : public sim::TftpFetcher
{
public:
    explicit Device(const TftpFaultSettings &faults = {})
        : TftpFetcher(deviceIntervals(), faults, 20240607)
    {
        fetch({QHostAddress(QStringLiteral("127.0.0.2")), 69, QStringLiteral("any.wav")},
              QHostAddress(QHostAddress::LocalHost));
    }

    QSignalSpy fetched{this, &TftpFetcher::finished};
    QSignalSpy gaveUp{this, &TftpFetcher::failed};
};

} // namespace

class UpdateDialogTest : public QObject
{
    Q_OBJECT

private slots:
    void bringsTheFile_data();
    void bringsTheFile();
    void servesAForeignClient();
    void offersTheFileBeyondTheStartWait();
    void endsTheTransferWhenItGoes_data();
    void endsTheTransferWhenItGoes();
    void saysWhoGetsWhat_data();
    void saysWhoGetsWhat();
    void saysWhatFailed_data();
    void saysWhatFailed();
    void refusesToServeAnEmptyFile_data();
    void refusesToServeAnEmptyFile();
    void servesOnlyTheFirstRequest();
    void tellsASecondDialogThatThePortIsTaken();
    void choosesAnAddressThatDevicesReach();
};

void UpdateDialogTest::bringsTheFile_data()
{
    QTest::addColumn<int>("size");
    QTest::addColumn<TftpFaultSettings>("faults");
    for (const int size : {1, 255, 256, 257, 512, 65535 * 256 - 1})
        QTest::addRow("%d bytes", size) << size << TftpFaultSettings();
    QTest::newRow("acknowledgements lost") << 5000 << TftpFaultSettings{Kind::LostAck, 0, 0};
    QTest::newRow("acknowledgements doubled") << 5000 << TftpFaultSettings{Kind::DuplicateAck, 0, 0};
    QTest::newRow("wrong blocks acknowledged") << 5000 << TftpFaultSettings{Kind::WrongBlock, 0, 0};
    for (const int size : {1, 512, 100000})
        QTest::addRow("%d bytes, a tenth lost, a tenth doubled", size)
            << size << TftpFaultSettings{Kind::None, 0.1, 0.1};
}

void UpdateDialogTest::bringsTheFile()
{
    QFETCH(int, size);
    QFETCH(TftpFaultSettings, faults);
    UpdateDialog::Intervals intervals;
    intervals.transfer.packetTimeout = 100ms;
    intervals.transfer.step = 0ms;
    OpenedDialog offer(pattern(size), intervals);
    Device device(faults);
    QVERIFY(device.fetched.wait(280000));
    QVERIFY2(device.fetched.first().first().toByteArray() == pattern(size), "the file differs");
    QTRY_COMPARE(offer.status(),
                 updatetexts::finishedUnplayable(size)); // also when the last acknowledgement was lost
}

void UpdateDialogTest::servesAForeignClient()
{
    if (QSysInfo::kernelType() == QLatin1String("winnt"))
        QSKIP("the client is a perl program");
    const int size = 160 * 1024;
    OpenedDialog offer(pattern(size));
    QProcess perl;
    perl.start(QStringLiteral("perl"), {QStringLiteral("-e"), QLatin1String(ForeignClient)});
    QSignalSpy ended(&perl, QOverload<int, QProcess::ExitStatus>::of(&QProcess::finished));
    QVERIFY2(ended.wait(30000), "needs perl with Net::TFTP (Debian: libnet-tftp-perl)");
    QCOMPARE(QString::fromLatin1(perl.readAllStandardError()), QString());
    QVERIFY2(perl.readAllStandardOutput() == pattern(size), "the file differs");
    QTRY_COMPARE(offer.status(), updatetexts::finishedUnplayable(size));
}

void UpdateDialogTest::offersTheFileBeyondTheStartWait()
{
    const int size = 99 * 256; // the last block ends at 100 % in double precision, at 99 % in single
    OpenedDialog dialog(pattern(size), brief());
    QCOMPARE(dialog.status(), updatetexts::waiting());
    QCOMPARE(dialog.cell(DevList::NameColumn, Qt::DisplayRole).toString(), QStringLiteral("Studio A"));
    QSignalSpy given(dialog.get(), &UpdateDialog::signalTftpDone);
    QVERIFY(given.wait(2000));
    QCOMPARE(dialog.status(), updatetexts::notAskedYet());
    QVERIFY(dialog.close()->isEnabled());
    const Device late;
    QTRY_COMPARE(dialog.status(), updatetexts::finishedUnplayable(size));
    QCOMPARE(given.size(), 2);
    QCOMPARE(dialog.progress(), 99);
    QSignalSpy closed(dialog.get(), &QDialog::finished);
    QTest::mouseClick(dialog.close(), Qt::LeftButton);
    QCOMPARE(closed.value(0).value(0).toInt(), 0);
}

void UpdateDialogTest::endsTheTransferWhenItGoes_data()
{
    QTest::addColumn<bool>("byEscape");
    QTest::newRow("Escape") << true;
    QTest::newRow("destroyed") << false;
}

void UpdateDialogTest::endsTheTransferWhenItGoes()
{
    QFETCH(bool, byEscape);
    OpenedDialog dialog(pattern(100000));
    Device device;
    QTRY_VERIFY(dialog.progress() >= 2);
    QVERIFY(dialog.status().contains(QStringLiteral("127.0.0.1: %1 %").arg(dialog.progress())));
    QVERIFY(!dialog.close()->isEnabled());
    QTest::mouseClick(dialog.close(), Qt::LeftButton);
    QVERIFY2(dialog->isVisible(), "Close does not work yet");
    if (byEscape)
        QTest::keyClick(dialog.get(), Qt::Key_Escape);
    QCOMPARE(dialog->result(), 0);
    dialog.destroy();
    QVERIFY2(QUdpSocket().bind(QHostAddress::AnyIPv4, 69, QUdpSocket::DontShareAddress),
             "the port is still taken");
    QVERIFY(device.gaveUp.wait());
}

void UpdateDialogTest::saysWhoGetsWhat_data()
{
    QTest::addColumn<QByteArray>("file");
    QTest::addColumn<QString>("deviceAddress");
    QTest::addColumn<QString>("notice");
    QTest::addColumn<QString>("end");
    const QHostAddress here(QHostAddress::LocalHost);
    const QHostAddress elsewhere(QStringLiteral("127.0.0.9"));
    QTest::newRow("playable") << recording("\1") << here.toString() << QString() << updatetexts::finished(48);
    QTest::newRow("stereo") << recording("\2") << here.toString()
                            << updatetexts::unplayable(QStringLiteral("stereo, 16 kHz, 16 bit PCM"))
                            << updatetexts::finishedUnplayable(48);
    QTest::newRow("stranger") << recording("\1") << elsewhere.toString()
                              << updatetexts::stranger(here, QStringLiteral("Studio A"), elsewhere)
                              << updatetexts::finishedWithStranger(here);
}

/// To the eye and to a screen reader; the ticks are for a device that can play what it got.
void UpdateDialogTest::saysWhoGetsWhat()
{
    QFETCH(QByteArray, file);
    QFETCH(QString, deviceAddress);
    QFETCH(QString, notice);
    QFETCH(QString, end);
    OpenedDialog dialog(file, {}, deviceAddress);
    const bool forTheFile = QTest::currentDataTag() == QByteArray("stereo");
    QCOMPARE(dialog.label("notice_label")->isVisible(), forTheFile);
    const Device device;
    QTRY_COMPARE(dialog.status(), end);
    QCOMPARE(dialog.label("notice_label")->isVisible(), !notice.isEmpty());
    QCOMPARE(dialog.label("notice_label")->text(), notice);
    QCOMPARE(dialog.close()->accessibleDescription(), (notice + QLatin1Char('\n') + end).trimmed());
    const auto tick = dialog->style()->standardIcon(QStyle::SP_DialogApplyButton).pixmap(22);
    QCOMPARE(dialog.label("status_icon")->pixmap(Qt::ReturnByValue).toImage() == tick.toImage(),
             notice.isEmpty());
    auto *list = dialog->findChild<QTableView *>();
    const QImage row = list->viewport()->grab({0, 0, list->columnWidth(0), list->rowHeight(0)}).toImage();
    bool isTicked = false;
    for (int x = 0; x < row.width(); ++x)
        isTicked |= row.pixelColor(x, row.height() / 2) == list->palette().color(QPalette::Text);
    QCOMPARE(isTicked, notice.isEmpty());
}

void UpdateDialogTest::saysWhatFailed_data()
{
    QTest::addColumn<int>("size");
    QTest::addColumn<TftpFaultSettings>("fault");
    QTest::addColumn<VmTftp::Failure>("failure");
    QTest::addColumn<QString>("deviceSays");
    QTest::newRow("refused") << 1000 << TftpFaultSettings{Kind::Nack, 0, 0} << VmTftp::Failure::Refused
                             << "refused by the fault option at block 3";
    QTest::newRow("no acknowledgement") << 1000 << TftpFaultSettings{Kind::Silence, 0, 0}
                                        << VmTftp::Failure::NoAnswer << "no block after 3 came";
    QTest::newRow("too long") << 65535 * 256 << TftpFaultSettings{Kind::None, 0, 0}
                              << VmTftp::Failure::TooLong << "the server does not answer";
}

void UpdateDialogTest::saysWhatFailed()
{
    QFETCH(int, size);
    QFETCH(TftpFaultSettings, fault);
    QFETCH(VmTftp::Failure, failure);
    QFETCH(QString, deviceSays);
    OpenedDialog dialog(pattern(size), brief());
    const Device device(fault);
    QTRY_COMPARE(dialog.status(), updatetexts::failed(failure));
    QVERIFY(dialog.close()->isEnabled());
    QTRY_COMPARE(device.gaveUp.value(0).value(0).toString(), deviceSays);
    QVERIFY(device.fetched.isEmpty());
}

void UpdateDialogTest::refusesToServeAnEmptyFile_data()
{
    QTest::addColumn<bool>("destroyed");
    QTest::newRow("answered") << false;
    QTest::newRow("destroyed under its message") << true;
}

void UpdateDialogTest::refusesToServeAnEmptyFile()
{
    QFETCH(bool, destroyed);
    OpenedDialog dialog(pattern(0));
    QSignalSpy closed(dialog.get(), &QDialog::finished);
    Device device;
    support::BoxAnswerer answerer(QMessageBox::Ok);
    answerer.setWhileOpen([&] {
        device.abort();
        QMetaObject::invokeMethod(dialog.get(), "handleTimeout"); // an impatient device asked again
        if (destroyed)
            dialog.destroy();
        QCOMPARE(!QApplication::activeModalWidget(), destroyed);
    });
    QTRY_COMPARE(answerer.seen().size(), 1);
    QCOMPARE(answerer.seen().first().title, QStringLiteral("Failed to update the image"));
    QCOMPARE(answerer.seen().first().text,
             QStringLiteral("There was a failure in updating the voice cue wav file."));
    QTRY_COMPARE(closed.count(), destroyed ? 0 : 1);
}

void UpdateDialogTest::servesOnlyTheFirstRequest()
{
    const int size = 20000;
    OpenedDialog dialog(pattern(size));
    QUdpSocket stray;
    for (const QByteArray &noRequest : {QByteArray(), QByteArray("\0", 1), QByteArray("\0\2x", 3)})
        stray.writeDatagram(noRequest, QHostAddress(QStringLiteral("127.0.0.2")), 69);
    const Device first;
    QTRY_COMPARE(dialog->findChildren<VmTftp *>().size(), 1);
    const Device second;
    QTRY_COMPARE(dialog.status(), updatetexts::finishedUnplayable(size));
    QVERIFY(first.fetched.first().first().toByteArray() == pattern(size));
    QTRY_COMPARE(second.gaveUp.value(0).value(0).toString(), QStringLiteral("the server does not answer"));
    QCOMPARE(dialog->findChildren<VmTftp *>().size(), 1);
}

void UpdateDialogTest::tellsASecondDialogThatThePortIsTaken()
{
    OpenedDialog first(pattern(300));
    OpenedDialog second(pattern(600));
    const Device device;
    QTRY_COMPARE(first.status(), updatetexts::finishedUnplayable(300));
    QCOMPARE(second.status(), updatetexts::portClosed(QAbstractSocket::AddressInUseError, QString()));
}

void UpdateDialogTest::choosesAnAddressThatDevicesReach()
{
    QList<QNetworkAddressEntry> entries;
    for (const QString &address : support::words("fe80::1 127.0.0.1 10.0.0.7 10.0.0.8")) {
        QNetworkAddressEntry entry;
        entry.setIp(QHostAddress(address));
        entries.append(entry);
    }
    QCOMPARE(firstReachableAddress(entries), QHostAddress(QStringLiteral("10.0.0.7")));
    QVERIFY(firstReachableAddress(entries.mid(0, 2)).isNull());
}

QTEST_MAIN(UpdateDialogTest)
#include "tst_update_dialog.moc"
