#include "devhost/device_finder.h"
#include "devhost/device_transport.h"
#include "devhost/message_recorder.h"
#include "devhost/session_recorder.h"
#include "devhost/whole_file.h"
#include "host/px_devices.h"

#include <QDir>
#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

#include <csignal>
#include <sys/resource.h>
#include <sys/stat.h>

using namespace devhost;

namespace {

/// Lets no file of the process grow beyond a size, as on a full disk, while it lives.
class FileSizeLimit
{
public:
    explicit FileSizeLimit(rlim_t bytes)
        : m_handler(signal(SIGXFSZ, SIG_IGN))
    {
        getrlimit(RLIMIT_FSIZE, &m_before);
        const rlimit limit{bytes, m_before.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~FileSizeLimit()
    {
        setrlimit(RLIMIT_FSIZE, &m_before);
        signal(SIGXFSZ, m_handler);
    }
    Q_DISABLE_COPY(FileSizeLimit)

private:
    rlimit m_before{};
    void (*m_handler)(int);
};

} // namespace

class FilesTest : public QObject
{
    Q_OBJECT

private slots:
    void recordsMessages();
    void keepsWhatFitsOfARecording();
    void writesAllOrNothing();
};

void FilesTest::recordsMessages()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("messages.jsonl"));
    DeviceTransport transport;
    MessageRecorder recorder(&transport);
    QVERIFY(!recorder.start(folder.filePath(QStringLiteral("no/such/folder"))).isEmpty());
    QCOMPARE(recorder.start(path), QString());
    emit transport.sent(QStringLiteral("KBX-1"), "{\"get\":\"/info\"}");
    emit transport.received(QStringLiteral("Büro"), "a\n\xff");
    QFile file(path);
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QList<QByteArray> lines = file.readAll().split('\n');
    QCOMPARE(lines.size(), 3); // the last one empty
    const QJsonObject sent = QJsonDocument::fromJson(lines.at(0)).object();
    QCOMPARE(sent.keys(),
             (QStringList{QStringLiteral("device"), QStringLiteral("dir"), QStringLiteral("t_ms"),
                          QStringLiteral("text")}));
    QVERIFY(sent.value(QStringLiteral("t_ms")).isDouble());
    QCOMPARE(sent.value(QStringLiteral("dir")).toString(), QStringLiteral("tx"));
    QCOMPARE(sent.value(QStringLiteral("text")).toString(), QStringLiteral("{\"get\":\"/info\"}"));
    const QJsonObject received = QJsonDocument::fromJson(lines.at(1)).object();
    QCOMPARE(received.value(QStringLiteral("dir")).toString(), QStringLiteral("rx"));
    QCOMPARE(received.value(QStringLiteral("device")).toString(), QStringLiteral("Büro"));
    QCOMPARE(received.value(QStringLiteral("bytes")).toString(), QStringLiteral("YQr/"));
}

void FilesTest::keepsWhatFitsOfARecording()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("session.jsonl"));
    pxDevices devices;
    const DeviceFinder finder(&devices);
    DeviceTransport transport;
    SessionRecorder recorder(&finder);
    recorder.follow(&transport);
    QSignalSpy problem(&recorder, &SessionRecorder::problem);
    QSignalSpy changed(&recorder, &SessionRecorder::changed);
    QVERIFY(
        recorder.start(folder.filePath(QStringLiteral("no/such/folder"))).contains(QStringLiteral("cannot")));
    QCOMPARE(recorder.start(path), QString());
    QByteArray before;
    {
        const FileSizeLimit full(5000);
        for (int count = 0; count < 100; ++count)
            emit transport.sent(QStringLiteral("KBX-1"), QByteArray(100, 'x'));
        before = readWholeFile(path, 10000).bytes;
    }
    QVERIFY(before.size() > 4800);
    QVERIFY(before.endsWith("\"}\n"));
    QVERIFY(!recorder.isRecording());
    QCOMPARE(problem.count(), 1);
    QCOMPARE(changed.count(), 2);
    QVERIFY(problem.first().first().toString().contains(QString::number(before.count('\n'))));
    // One that is there stays as it is.
    QVERIFY(recorder.start(path).contains(QStringLiteral("there already")));
    emit transport.sent(QStringLiteral("KBX-1"), "x");
    QCOMPARE(readWholeFile(path, 10000).bytes, before);
}

void FilesTest::writesAllOrNothing()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("a.xml"));
    QCOMPARE(writeWholeFile(path, "before"), QString());
    {
        const FileSizeLimit full(100);
        QVERIFY(!writeWholeFile(path, QByteArray(10000, 'x')).isEmpty());
    }
    const QString pipe = folder.filePath(QStringLiteral("pipe"));
    QCOMPARE(mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
    QVERIFY(!writeWholeFile(pipe, "lost").isEmpty());
    QVERIFY(!writeWholeFile(folder.filePath(QStringLiteral("none/a.xml")), "lost").isEmpty());
    QVERIFY(!writeWholeFile(folder.path(), "lost").isEmpty());
    QCOMPARE(readWholeFile(path, 100).bytes, QByteArray("before"));
    QCOMPARE(QDir(folder.path()).entryList(QDir::Files | QDir::System),
             (QStringList{QStringLiteral("a.xml"), QStringLiteral("pipe")}));
}

QTEST_GUILESS_MAIN(FilesTest)
#include "tst_files.moc"
