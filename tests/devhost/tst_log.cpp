#include "devhost/communication_log.h"
#include "devhost/device_transport.h"
#include "devhost/log_filter.h"
#include "devhost/message_recorder.h"
#include "devhost/request_watch.h"
#include "devhost/whole_file.h"

#include <QAbstractItemModelTester>
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

class Log : public QObject
{
    Q_OBJECT

private slots:
    void staysBounded();
    void filters_data();
    void filters();
    void pairsReplies_data();
    void pairsReplies();
    void losesWhatIsNeverAnswered();
    void recordsMessages();
    void writesAllOrNothing();
};

void Log::staysBounded()
{
    constexpr int most = 30;
    CommunicationLog log(most, 1000);
    const QAbstractItemModelTester tester(&log, QAbstractItemModelTester::FailureReportingMode::Fatal);
    for (int line = 0; line < 100; ++line) {
        log.append(LogSource::Sent, QString(), QString::number(line));
        QVERIFY(log.rowCount() <= most);
    }
    QCOMPARE(log.entry(log.rowCount() - 1).text, QStringLiteral("99"));
    const int first = log.entry(0).text.toInt();
    for (int row = 0; row < log.rowCount(); ++row)
        QCOMPARE(log.entry(row).text.toInt(), first + row);
    for (int line = 0; line < 100; ++line) {
        log.append(LogSource::Received, QString(), QString(100, QLatin1Char('x')));
        int bytes = 0;
        for (int row = 0; row < log.rowCount(); ++row)
            bytes += log.entry(row).text.size() * int(sizeof(QChar));
        QVERIFY(bytes <= 1000);
    }
    QVERIFY(log.rowCount() >= 4);
    // Shown in part, kept whole.
    const QString whole(50000, QLatin1Char('y'));
    log.append(LogSource::Received, QString(), whole);
    QCOMPARE(log.rowCount(), 1);
    QVERIFY(log.index(0, CommunicationLog::Text).data().toString().size() < 2000);
    QVERIFY(CommunicationLog::lineOf(log.entry(0)).endsWith(whole));
    log.clear();
    QCOMPARE(log.rowCount(), 0);
}

void Log::filters_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QList<int>>("hidden");
    QTest::addColumn<QStringList>("shown");
    const QString get = QStringLiteral("{\"get\":\"/system/usb\"}");
    const QString poll = QStringLiteral("{\"get\":\"/status/usb\"}");
    const QString reply = QStringLiteral("{\"result\":\"OK\"}");
    const QString alarm = QStringLiteral("usb is on fire");
    QTest::newRow("a word") << QStringLiteral("USB") << QList<int>() << QStringList{get, poll, alarm};
    QTest::newRow("every word") << QStringLiteral("usb get") << QList<int>() << QStringList{get, poll};
    QTest::newRow("not a word") << QStringLiteral("usb -status") << QList<int>() << QStringList{get, alarm};
    QTest::newRow("a device") << QStringLiteral("kbx-2") << QList<int>() << QStringList{poll};
    QTest::newRow("text and source") << QStringLiteral("usb") << QList<int>{int(LogSource::Sent)}
                                     << QStringList{alarm};
}

void Log::filters()
{
    QFETCH(const QString, text);
    QFETCH(const QList<int>, hidden);
    QFETCH(const QStringList, shown);
    CommunicationLog log(10, 10000);
    LogFilter filter(&log);
    log.append(LogSource::Sent, QStringLiteral("KBX-1"), QStringLiteral("{\"get\":\"/system/usb\"}"));
    log.append(LogSource::Sent, QStringLiteral("KBX-2"), QStringLiteral("{\"get\":\"/status/usb\"}"));
    filter.setText(text);
    for (int source : hidden)
        filter.setSourceShown(LogSource(source), false);
    // Lines that come in later are filtered the same way.
    log.append(LogSource::Received, QStringLiteral("KBX-1"), QStringLiteral("{\"result\":\"OK\"}"));
    log.append(LogSource::Problem, QString(), QStringLiteral("usb is on fire"));
    QStringList lines;
    for (int row = 0; row < filter.rowCount(); ++row)
        lines.append(filter.index(row, CommunicationLog::Text).data().toString());
    QCOMPARE(lines, shown);
    for (int source : hidden)
        filter.setSourceShown(LogSource(source), true);
    filter.setText(QString());
    QCOMPARE(filter.rowCount(), log.rowCount());
}

void Log::pairsReplies_data()
{
    QTest::addColumn<QByteArray>("reply");
    QTest::addColumn<qint64>("token");
    QTest::addColumn<QString>("refusal");
    QTest::newRow("of the second request")
        << QByteArray(R"({"cmd":"set","param":"/b","result":"OK","value":1})") << qint64(2) << QString();
    QTest::newRow("of another kind of request")
        << QByteArray(R"({"cmd":"get","param":"/b","result":"OK","value":1})") << qint64(-1) << QString();
    QTest::newRow("refused") << QByteArray(R"({"cmd":"set","param":"/b","result":"/b: too much"})")
                             << qint64(2) << QStringLiteral("/b /b: too much");
    QTest::newRow("refused without a reason")
        << QByteArray(R"({"cmd":"get","param":"/a","result":5})") << qint64(1) << QStringLiteral("/a ");
    QTest::newRow("without a path") << QByteArray(R"({"cmd":"","param":"","result":"no JSON"})") << qint64(1)
                                    << QStringLiteral("/a no JSON");
    QTest::newRow("plain no") << QByteArray("NACK LOAD 3\r") << qint64(1) << QStringLiteral("/a NACK LOAD 3");
    QTest::newRow("plain yes") << QByteArray("ACK SAVE 3\r") << qint64(1) << QString();
    QTest::newRow("garbage") << QByteArray::fromHex("00ff7b") << qint64(1) << QString();
    QTest::newRow("bytes behind the text")
        << QByteArray("{\"cmd\":\"set\",\"param\":\"/b\",\"result\":\"OK\"}\0\xff", 42) << qint64(2)
        << QString();
}

void Log::pairsReplies()
{
    QFETCH(const QByteArray, reply);
    QFETCH(const qint64, token);
    QFETCH(const QString, refusal);
    const QString device = QStringLiteral("KBX-1");
    RequestWatch watch;
    QString refused;
    connect(&watch, &RequestWatch::refused, this, [&](const Refusal &seen) {
        QCOMPARE(seen.device, device);
        refused = seen.request.path + QLatin1Char(' ') + seen.reason;
    });
    watch.noteSent(device, R"({"get":"/a"})", 1);
    watch.noteSent(device, R"({"set":"/b", "value":1})", 2);
    watch.noteSent(device, R"({"set":"/b", "value":2})", 3);
    const RequestWatch::Answer answer = watch.noteReceived(device, reply);
    QCOMPARE(answer.token, token);
    QCOMPARE(refused, refusal);
    const DeviceFigures figures = watch.figures(device);
    QCOMPARE(figures.requests, 3);
    QCOMPARE(figures.answered, token < 0 ? 0 : 1);
    QCOMPARE(figures.waiting, 3 - figures.answered);
    QCOMPARE(figures.refused, refusal.isEmpty() ? 0 : 1);
    QCOMPARE(watch.longestWaiting(device).request.path,
             token == 1 ? QStringLiteral("/b") : QStringLiteral("/a"));
    QCOMPARE(watch.noteReceived(QStringLiteral("KBX-2"), reply).token, qint64(-1));
}

void Log::losesWhatIsNeverAnswered()
{
    const QString device = QStringLiteral("KBX-1");
    const QByteArray get = R"({"get":"/a"})";
    RequestWatch watch({20, 10, 400, 2});
    QSignalSpy lost(&watch, &RequestWatch::lost);
    QSignalSpy changed(&watch, &RequestWatch::figuresChanged);
    watch.noteSent(device, get, 1);
    QTRY_VERIFY(watch.longestWaiting(device).ms > 20);
    watch.noteSent(device, get, 2);
    QCOMPARE(lost, (QList<QVariantList>{{qint64(1)}}));
    watch.noteSent(device, get, 3); // at once: both may still be answered
    QTRY_VERIFY(watch.longestWaiting(device).ms > 20);
    QCOMPARE(watch.noteReceived(device, R"({"cmd":"get","param":"/a","result":"OK"})").token, qint64(2));
    QCOMPARE(watch.figures(device).late, 1);
    QVERIFY(watch.figures(device).worstMs > 20);
    watch.noteSent(device, "LOAD 1\r", 4);
    watch.noteSent(device, "LOAD 2\r", 5); // more than may wait
    QCOMPARE(lost.value(1), QVariantList{qint64(3)});
    QTRY_COMPARE(lost.count(), 4);
    QCOMPARE(watch.figures(device).lost, 4);
    QCOMPARE(watch.figures(device).waiting, 0);
    QVERIFY(changed.count() >= 1);
    watch.forget(device);
    QCOMPARE(watch.figures(device).requests, 0);
}

void Log::recordsMessages()
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
    QVERIFY(received.value(QStringLiteral("text")).toString().startsWith(QStringLiteral("a\n")));
}

void Log::writesAllOrNothing()
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

QTEST_GUILESS_MAIN(Log)
#include "tst_log.moc"
