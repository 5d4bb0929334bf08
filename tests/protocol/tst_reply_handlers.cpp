#include "tests/protocol/fake_window.h"

#include <QJsonDocument>
#include <QTest>

namespace {

QJsonObject parsed(const QByteArray &json)
{
    return QJsonDocument::fromJson(json).object();
}

QByteArray compact(const QJsonObject &object)
{
    return QJsonDocument(object).toJson(QJsonDocument::Compact);
}

} // namespace

/// What an accepted reply leaves in the caches.
class ReplyHandlersTest : public QObject
{
    Q_OBJECT

private slots:
    void storesReplies_data()
    {
        for (const char *column : {"cmd", "param", "value", "section", "before"})
            QTest::addColumn<QString>(column);
        QTest::addColumn<QByteArray>("after");
        QTest::addColumn<int>("refreshes");
        const auto row = [](const char *request, const char *value, const char *section, const char *before,
                            const char *after, int refreshes = 0) {
            const QString text = QString::fromLatin1(request);
            QTest::newRow(qPrintable(text + QLatin1Char(' ') + QLatin1String(value)))
                << text.section(QLatin1Char(' '), 0, 0) << text.section(QLatin1Char(' '), 1)
                << QString::fromLatin1(value) << QString::fromLatin1(section) << QString::fromLatin1(before)
                << QByteArray(after) << refreshes;
        };
        const char bt[] = "/status/bluetooth";
        row("get /status/bluetooth/state", R"("idle")", bt, "null", R"({"state":"idle"})");
        row("get /status/bluetooth/state", "7", bt, R"({"device":{}})", R"({"device":{},"state":""})");
        row("get /status/bluetooth/list_size", "2", bt, "null", R"({"list_size":2})");
        row("get /status/bluetooth/device", R"({"name":"a"})", bt, "null", R"({"device":{"name":"a"}})");
        row("get /status/bluetooth/list/0", R"({"a":1})", bt, "null", R"({"list":[{"a":1}]})");
        row("get /status/bluetooth/list/2", R"({"a":1})", bt, "null", R"({"list":[{},{},{"a":1}]})");
        row("get /status/bluetooth/list/0", "true", bt, R"({"list":[{"a":1},{"b":1}]})",
            R"({"list":[{},{"b":1}]})");
        const char mixer[] = "/preset/dsp/mixer";
        row("get /preset/dsp/mixer/0", "[1]", mixer, "null", "[[1]]");
        row("get /preset/dsp/mixer/1", "[9]", mixer, "[[1],[2],[3]]", "[[1],[9],[3]]");
        row("get /preset/dsp/mixer/2", "[9]", mixer, "[[1]]", "[[1],[],[9]]");
        row("set /preset/dsp/mixer", "[[9]]", mixer, "[[1]]", "[[1]]");
        for (const char *strip :
             {"dante_rx", "dante_tx", "usb_playback", "usb_record", "bt_sink", "bt_source"}) {
            const QByteArray section = QByteArray("/preset/dsp/") + strip;
            row("set " + section + "/1/gain", "-6", section, R"([{"gain":0},{"gain":0,"mute":true}])",
                R"([{"gain":0},{"gain":-6,"mute":true}])");
            row("set " + section + "/0/mute", "true", section, R"([{"gain":0}])",
                R"([{"gain":0,"mute":true}])");
        }
        row("set /preset/dsp/dante_rx/0/mute", "1", "/preset/dsp/dante_rx", "[{}]", R"([{"mute":false}])");
        row("set /preset/dsp/dante_rx/4/gain", "1", "/preset/dsp/dante_rx", "[{}]", "[{}]");
        const char tone[] = "/system/function_gen";
        row("set /system/function_gen/enable", "true", tone, "{}", R"({"enable":true})");
        row("set /system/function_gen/frequency", "440", tone, R"({"enable":true})",
            R"({"enable":true,"frequency":440})");
        row("set /system/function_gen/amplitude", R"("loud")", tone, "{}", R"({"amplitude":0})");
        row("set /system/usb/priority", "true", "/system/usb", "{}", R"({"priority":true})", 1);
        row("set /system/usb/mode", R"("2x2")", "/system/usb", "{}", R"({"mode":"2x2"})", 1);
        const char sys[] = "/system/bluetooth";
        row("set /system/bluetooth/enable", "true", sys, "{}", R"({"enable":true})", 1);
        row("set /system/bluetooth/button", "false", sys, "{}", R"({"button":false})", 1);
        row("set /system/bluetooth/name", R"("x")", sys, "{}", R"({"name":"x"})", 1);
        row("set /system/bluetooth/connection_mode", R"("basic")", sys, "{}",
            R"({"connection_mode":"basic"})", 1);
        row("set /system/bluetooth/profile", R"("hfp")", sys, "{}", R"({"profile":"hfp"})", 1);
        row("set /system/voice_cue/3/enable", "true", "/system/voice_cue", "[{},{},{},{}]",
            R"([{},{},{},{"enable":true}])", 1);
        row("set /system/notifications/enable", "true", "/system/notifications", R"({"port":1})",
            R"({"enable":true,"port":1})");
        for (const char *whole : {"/system/notifications", "/system/metering", "/system/network"})
            row(QByteArray("set ") + whole, R"({"port":2})", whole, R"({"ip":"a"})", R"({"port":2})", 1);
    }

    void storesReplies()
    {
        QFETCH(QString, cmd);
        QFETCH(QString, param);
        QFETCH(QString, value);
        QFETCH(QString, section);
        QFETCH(QString, before);
        FakeWindow window;
        QJsonObject &cache = window.caches()[sectionAt(section)->section];
        cache
            = before == QLatin1String("null") ? QJsonObject() : parsed("{\"value\":" + before.toUtf8() + '}');
        QJsonObject reply = parsed("{\"value\":" + value.toUtf8() + '}');
        reply.insert(QStringLiteral("param"), param);
        const bool isGet = cmd == QLatin1String("get");
        const ReplyHandler handler = isGet ? getHandlerFor(param) : setHandlerFor(param);
        QVERIFY(handler);
        if (!isGet) {
            const QJsonObject untouched = cache;
            handler(&window, reply);
            QCOMPARE(cache, untouched);
        }
        reply.insert(QStringLiteral("result"), QStringLiteral("OK"));
        handler(&window, reply);
        QFETCH(QByteArray, after);
        QCOMPARE(compact(cache), "{\"value\":" + after + '}');
        QTEST(window.refreshes, "refreshes");
    }

    void keepsWholeReplies()
    {
        int whole = 0;
        for (const SectionInfo &info : sections()) {
            const ReplyHandler handler = getHandlerFor(info.path);
            if (!handler)
                continue;
            FakeWindow window;
            const QJsonObject reply{{QStringLiteral("param"), QString(info.path)},
                                    {QStringLiteral("more"), whole++}};
            handler(&window, reply);
            QCOMPARE(window.caches()[info.section], reply);
        }
        QCOMPARE(whole, SectionCount - 2);
        QVERIFY(!getHandlerFor(QStringLiteral("/preset/dsp/mixer/7")));
        QVERIFY(!setHandlerFor(QStringLiteral("/preset/dsp/voice_cue/0/gain")));
        QVERIFY(!setHandlerFor(QStringLiteral("/control/identify")));
    }
};

QTEST_APPLESS_MAIN(ReplyHandlersTest)
#include "tst_reply_handlers.moc"
