#include "devhost/communication_log.h"
#include "devhost/log_filter.h"
#include "devhost/log_panel.h"
#include "devhost/message_bar.h"
#include "devhost/request_watch.h"
#include "devhost/seen_paths.h"
#include "devhost/window_memory.h"

#include <QAbstractItemModelTester>
#include <QAbstractItemView>
#include <QAccessible>
#include <QCompleter>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QSignalSpy>
#include <QTableView>
#include <QTest>

using namespace devhost;

namespace {

/// The first control in @p panel that a screen reader could not name.
const QWidget *nameless(const QWidget &panel)
{
    for (QWidget *widget : panel.findChildren<QWidget *>()) {
        if (widget->isVisibleTo(&panel) && widget->focusPolicy() != Qt::NoFocus
            && QAccessible::queryAccessibleInterface(widget)->text(QAccessible::Name).isEmpty())
            return widget;
    }
    return nullptr;
}

/// A filter text, "!" for problems only, "@" and a device, or "+" and a kind to switch.
void choose(LogFilter *filter, const QString &choice)
{
    if (choice.startsWith(QLatin1Char('+'))) {
        const auto kind = LogFilter::Kind(choice.mid(1).toInt());
        filter->setShown(kind, !filter->isShown(kind));
    } else if (choice == QLatin1String("!")) {
        filter->setOnlyProblems(true);
    } else if (choice.startsWith(QLatin1Char('@'))) {
        filter->setDevice(choice.mid(1));
    } else {
        filter->setText(choice);
    }
}

/// The entries of @p filter by their short names in filters_data().
QString shownBy(const LogFilter &filter)
{
    const QMap<QString, QString> names{{QStringLiteral("get /system/usb"), QStringLiteral("usb")},
                                       {QStringLiteral("set /b 1"), QStringLiteral("late")},
                                       {QStringLiteral("get /status/bt"), QStringLiteral("poll")},
                                       {QStringLiteral("get /status/usb"), QStringLiteral("poll!")},
                                       {QStringLiteral("Command Request:"), QStringLiteral("Command")},
                                       {QStringLiteral("usb is on fire"), QStringLiteral("alarm")},
                                       {QString(), QStringLiteral("reply")}};
    QStringList lines;
    for (const LogEntry &entry : filter.allEntries())
        lines.append(names.value(entry.summary, entry.summary));
    return lines.join(QLatin1Char(' '));
}

} // namespace

class Log : public QObject
{
    Q_OBJECT

private slots:
    void staysBounded();
    void filters_data();
    void filters();
    void showsWholeMessages();
    void takesTypedMessages_data();
    void takesTypedMessages();
    void knowsPaths();
    void helpsTyping();
    void exportsMessages();
    void pairsReplies_data();
    void pairsReplies();
    void losesWhatIsNeverAnswered();
};

void Log::staysBounded()
{
    constexpr int most = 30;
    constexpr int mostBytes = 30 * 1000;
    CommunicationLog log(most, mostBytes);
    const QAbstractItemModelTester tester(&log, QAbstractItemModelTester::FailureReportingMode::Fatal);
    QSignalSpy inserted(&log, &QAbstractItemModel::rowsInserted);
    for (int line = 0; line < 25; ++line)
        log.append(LogSource::Host, QString(), QString::number(line));
    QTRY_COMPARE(log.rowCount(), 25);
    QCOMPARE(inserted.count(), 1); // a view is laid out once
    for (int line = 25; line < 100; ++line)
        log.append(LogSource::Host, QString(), QString::number(line));
    QTRY_COMPARE(log.entry(log.rowCount() - 1).summary, QStringLiteral("99"));
    QVERIFY(log.rowCount() <= most);
    const int first = log.entry(0).summary.toInt();
    for (int row = 0; row < log.rowCount(); ++row) {
        QCOMPARE(log.entry(row).summary.toInt(), first + row);
        QCOMPARE(log.numberOf(row), qint64(first + row));
    }
    // Texts and the replies that come to them count as well.
    const QByteArray large(5000, 'x');
    RequestWatch::Answer answer;
    for (int line = 0; line < 100; ++line) {
        answer.token = log.append(requestEntry(QString(), large));
        QVERIFY(log.answer(answer.token, large, answer));
    }
    QTRY_COMPARE(log.numberOf(log.rowCount() - 1), answer.token);
    QVERIFY2(log.rowCount() == 2, QByteArray::number(log.rowCount()));
    QVERIFY(!log.answer(0, large, answer));
    // Shown in part, kept whole.
    const QByteArray whole(50000, 'y');
    const qint64 number = log.append(requestEntry(QString(), whole));
    QTRY_COMPARE(log.rowCount(), 1);
    QVERIFY(log.index(0, CommunicationLog::Text).data().toString().size() < 2000);
    QCOMPARE(log.numbered(number)->message, whole);
    log.clear();
    QCOMPARE(log.rowCount(), 0);
    QVERIFY(!log.numbered(number));
}

void Log::filters_data()
{
    QTest::addColumn<QString>("choice");
    QTest::addColumn<QString>("shown"); ///< first characters of the messages
    QTest::newRow("quiet at first") << QString() << QStringLiteral("usb late poll! ready alarm reply");
    QTest::newRow("polling") << QStringLiteral("+0")
                             << QStringLiteral("usb late poll poll! ready alarm reply");
    QTest::newRow("echoes") << QStringLiteral("+1")
                            << QStringLiteral("usb late poll! Command ready alarm reply");
    QTest::newRow("no notes") << QStringLiteral("+2") << QStringLiteral("usb late poll! alarm reply");
    QTest::newRow("problems") << QStringLiteral("!") << QStringLiteral("late poll! alarm reply");
    QTest::newRow("device") << QStringLiteral("@KBX-2") << QStringLiteral("late reply");
    QTest::newRow("a word") << QStringLiteral("USB") << QStringLiteral("usb poll! alarm");
    QTest::newRow("every word") << QStringLiteral("usb get") << QStringLiteral("usb poll!");
    QTest::newRow("not a word") << QStringLiteral("usb -status") << QStringLiteral("usb alarm");
    QTest::newRow("in a reply") << QStringLiteral("busy") << QStringLiteral("poll!");
}

void Log::filters()
{
    QFETCH(const QString, choice);
    QFETCH(const QString, shown);
    CommunicationLog log(20, 100000);
    LogFilter filter(&log);
    choose(&filter, choice);
    const QString first = QStringLiteral("KBX-1");
    const QString second = QStringLiteral("KBX-2");
    RequestWatch::Answer fine{1, 1, false, readReply(R"({"result":"OK"})")};
    log.answer(log.append(requestEntry(first, R"({"get":"/system/usb"})")), "{}", fine);
    fine.isLate = true;
    log.answer(log.append(requestEntry(second, R"({"set":"/b","value":1})")), "{}", fine);
    log.append(requestEntry(first, R"({"get":"/status/bt"})"));
    const qint64 poll = log.append(requestEntry(first, R"({"get":"/status/usb"})"));
    log.append(LogSource::Plugin, first, QStringLiteral("Command Request:"));
    log.append(LogSource::Plugin, first, QStringLiteral("ready"));
    log.append(LogSource::Problem, QString(), QStringLiteral("usb is on fire"));
    log.append(replyEntry(second, "{}", RequestWatch::Answer()));
    QTRY_COMPARE(log.rowCount(), 8);
    // What becomes a problem later on comes into view.
    const QByteArray refusal = R"({"cmd":"get","param":"/status/usb","result":"busy"})";
    log.answer(poll, refusal, {poll, 1, false, readReply(refusal)});
    QTRY_COMPARE(shownBy(filter), shown);
    QCOMPARE(filter.entries({0}).first().time, filter.entry(0).time);
}

void Log::showsWholeMessages()
{
    CommunicationLog log(20, 1000000);
    RequestWatch watch;
    WindowMemory memory{QString()};
    LogPanel panel(&log, &watch, &memory);
    const auto *detail = panel.findChild<QPlainTextEdit *>(QStringLiteral("logDetail"));
    auto *view = panel.findChild<QTableView *>(QStringLiteral("logView"));
    const QString device = QStringLiteral("KBX-1");
    const qint64 number = log.append(requestEntry(device, R"({"get":"/a"})"));
    watch.noteSent(device, R"({"get":"/a"})", number);
    QTRY_COMPARE(view->model()->rowCount(), 1);
    view->selectRow(0);
    QCOMPARE(detail->toPlainText(), QStringLiteral("{\n    \"get\": \"/a\"\n}"));
    // Not read anew by a JSON reader: order, doubled members and numbers are the device's.
    const QByteArray reply = R"({"value":[1.50,"a\"{,"],"param":"/a","cmd":"get","cmd":"get","result":"OK"})";
    log.answer(number, reply, watch.noteReceived(device, reply));
    QTRY_COMPARE(
        detail->toPlainText().section(QStringLiteral("\n\n"), 1),
        QStringLiteral(
            "{\n    \"value\": [\n        1.50,\n        \"a\\\"{,\"\n    ],\n    \"param\": \"/a\",\n"
            "    \"cmd\": \"get\",\n    \"cmd\": \"get\",\n    \"result\": \"OK\"\n}"));
    QCOMPARE(view->model()->index(0, CommunicationLog::Reply).data().toString(),
             QStringLiteral("[1.5,\"a\\\"{,\"]"));
    const QByteArray longest = "{\"a\":\"" + QByteArray(60000, 'x') + "\",\"b\":[1,2]}";
    log.append(requestEntry(device, longest));
    QTRY_COMPARE(view->model()->rowCount(), 2);
    view->selectRow(1);
    QCOMPARE(detail->toPlainText().size(), longest.size() + 14);
    QVERIFY(detail->toPlainText().endsWith(QStringLiteral("\n    \"b\": [1, 2]\n}")));
    const auto *figures = panel.findChild<QLabel *>(QStringLiteral("logFigures"));
    QTRY_VERIFY2(figures->text().startsWith(QStringLiteral("Editors: 1 requests")),
                 qPrintable(figures->text()));
    const QWidget *unnamed = nameless(panel);
    QVERIFY2(!unnamed, unnamed ? unnamed->metaObject()->className() : "");
}

void Log::takesTypedMessages_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("JSON") << QStringLiteral(R"({"set":"/a","value":"\\r\"\u00e9"})")
                          << QByteArray(R"({"set":"/a","value":"\\r\"\u00e9"})");
    QTest::newRow("broken JSON") << QStringLiteral("{\\x00") << QByteArray("{\\x00");
    QTest::newRow("plain") << QStringLiteral("LOAD 3\\r") << QByteArray("LOAD 3\r");
    QTest::newRow("backslash") << QStringLiteral("a\\x5cr") << QByteArray("a\\r");
    QTest::newRow("binary") << QStringLiteral("\\x7b\\x00\\xff\\n") << QByteArray("{\0\xff\n", 4);
}

void Log::takesTypedMessages()
{
    QFETCH(const QString, typed);
    QFETCH(const QByteArray, bytes);
    QCOMPARE(MessageBar::bytesOf(typed), bytes);
    QCOMPARE(MessageBar::typedFor(bytes), typed);
}

void Log::knowsPaths()
{
    SeenPaths paths;
    LogEntry entry = requestEntry(QString(), R"({"get":"/system/usb"})");
    const QByteArray reply = R"({"result":"OK","value":{"mode":"2x2","priority":false}})";
    entry.setReply(reply, {1, 1, false, readReply(reply)});
    paths.note(requestEntry(QString(), R"({"get":"/info"})"));
    paths.note(entry);
    paths.learn(QStringLiteral("| `/a/0..1/b` | yes |\nand `/c` |\n"));
    QCOMPARE(paths.stringList(),
             (QStringList{QStringLiteral("/a"), QStringLiteral("/a/0"), QStringLiteral("/a/0/b"),
                          QStringLiteral("/a/1"), QStringLiteral("/a/1/b"), QStringLiteral("/info"),
                          QStringLiteral("/system/usb"), QStringLiteral("/system/usb/mode"),
                          QStringLiteral("/system/usb/priority")}));
}

void Log::helpsTyping()
{
    SeenPaths paths;
    paths.learn(QStringLiteral("| `/info` |\n| `/system/usb/mode` |\n"));
    MessageBar bar(&paths);
    QList<QByteArray> sent;
    connect(&bar, &MessageBar::sendRequested, this,
            [&sent](const QString &, const QByteArray &message) { sent.append(message); });
    auto *field = bar.findChild<QLineEdit *>(QStringLiteral("messageField"));
    auto *completer = bar.findChild<QCompleter *>();
    bar.show();
    const auto choose = [&](const QString &typed, const QString &then = QString()) {
        field->clear();
        QTest::keyClicks(field, typed);
        for (int key : {Qt::Key_Down, Qt::Key_Return}) {
            if (completer->popup()->isVisible())
                QTest::keyClick(completer->popup(), Qt::Key(key));
        }
        QTest::keyClicks(field, then);
        QTest::keyClick(field, Qt::Key_Return);
    };
    choose(QStringLiteral("/in"));
    QCOMPARE(sent, QList<QByteArray>()); // to nobody
    bar.setDevice(QStringLiteral("KBX-1"));
    choose(QStringLiteral("/in"));
    choose(QStringLiteral("{\"set\":\"/system/usb/m"), QStringLiteral("1"));
    choose(QString());
    QTest::keyClicks(field, QStringLiteral("{\"get\":\"/b\"}"));
    QTest::keyClick(field, Qt::Key_Return);
    QTest::keyClicks(field, QStringLiteral("{}")); // in place of what was sent
    QCOMPARE(field->text(), QStringLiteral("{}"));
    QCOMPARE(sent.takeLast(), QByteArray(R"({"get":"/b"})"));
    QCOMPARE(sent, (QList<QByteArray>{R"({"get":"/info"})", R"({"set":"/system/usb/mode","value":1})"}));
    field->setText(QStringLiteral("draft"));
    QStringList recalled;
    for (int key : {Qt::Key_Up, Qt::Key_Up, Qt::Key_Up, Qt::Key_Down, Qt::Key_Down, Qt::Key_Down}) {
        QTest::keyClick(field, Qt::Key(key));
        recalled.append(field->text().left(7));
    }
    QCOMPARE(recalled.join(QLatin1Char(' ')),
             QStringLiteral(R"({"get": {"set": {"get": {"set": {"get": draft)"));
}

void Log::exportsMessages()
{
    const QString device = QString::fromUtf8("B\xc3\xbcro");
    LogEntry slow = requestEntry(device, "LOAD 3\r");
    LogEntry quick = requestEntry(device, R"({"get":"/a"})");
    quick.time = slow.time.addMSecs(2);
    quick.setReply("ACK\r", {1, 1, false, readReply("ACK\r")});
    QCOMPARE(quick.replySummary, QStringLiteral("ACK\\r")); // no value, so no "null"
    slow.setReply(QByteArray::fromHex("00ff"), {1, 7, false, ReplyText()});
    quick.setReply("{}", {2, 1, false, ReplyText()});
    QCOMPARE(
        jsonLinesOf({slow, quick}),
        QByteArray(
            "{\"device\":\"B\xc3\xbcro\",\"dir\":\"tx\",\"t_ms\":0,\"text\":\"LOAD 3\\r\"}\n"
            "{\"device\":\"B\xc3\xbcro\",\"dir\":\"tx\",\"t_ms\":2,\"text\":\"{\\\"get\\\":\\\"/a\\\"}\"}\n"
            "{\"device\":\"B\xc3\xbcro\",\"dir\":\"rx\",\"t_ms\":3,\"text\":\"{}\"}\n"
            "{\"bytes\":\"AP8=\",\"device\":\"B\xc3\xbcro\",\"dir\":\"rx\",\"t_ms\":7}\n"));
    const QStringList copied = linesOf(slow).split(QLatin1Char('\n'));
    QVERIFY(copied.at(0).endsWith(QStringLiteral("\ttx\tLOAD 3\\r")));
    QVERIFY(copied.at(1).endsWith(QStringLiteral("\trx\t00 ff")));
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
    constexpr qint64 AgoNs = 3600LL * 1000 * 1000 * 1000;
    watch.noteSent(device, R"({"get":"/a"})", 1, AgoNs);
    watch.noteSent(device, R"({"set":"/b", "value":1})", 2, AgoNs);
    watch.noteSent(device, R"({"set":"/b", "value":2})", 3);
    const RequestWatch::Answer answer = watch.noteReceived(device, reply);
    QCOMPARE(answer.token, token);
    QCOMPARE(answer.ms >= AgoNs / 1e6, token > 0);
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

QTEST_MAIN(Log)
#include "tst_log.moc"
