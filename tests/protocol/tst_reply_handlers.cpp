#include "protocol/reply_handlers.h"

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

/// Stands in for the editor window: caches without widgets.
class FakeWindow : public QObject, public DeviceStateOwner
{
public:
    SectionCaches &caches() override { return m_caches; }
    ReplyHandlerTable &getHandlers() override { return m_getHandlers; }
    void settingsRefresh() override { ++refreshes; }

    int refreshes = 0;

private:
    SectionCaches m_caches;
    ReplyHandlerTable m_getHandlers;
};

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
        row("get /status/bluetooth/list/2", R"({"a":1})", bt, "null", R"({"list":[{},{},{"a":1}]})");
        row("get /status/bluetooth/list/0", "true", bt, R"({"list":[{"a":1},{"b":1}]})",
            R"({"list":[{},{"b":1}]})");
        const char mixer[] = "/preset/dsp/mixer";
        row("get /preset/dsp/mixer/0", "[1]", mixer, "null", "[[1]]");
        row("get /preset/dsp/mixer/1", "[9]", mixer, "[[1],[2],[3]]", "[[1],[9],[3]]");
        row("get /preset/dsp/mixer/2", "[9]", mixer, "[[1]]", "[[1],[],[9]]");
        row("set /preset/dsp/mixer", "[[9]]", mixer, "[[1]]", "[[1]]");
        row("set /preset/dsp/dante_rx/4/gain", "1", "/preset/dsp/dante_rx", "[{}]", "[{}]");
        const char tone[] = "/system/function_gen";
        row("set /system/function_gen/amplitude", R"("loud")", tone, "{}", R"({"amplitude":0})");
        row("set /system/usb/priority", "true", "/system/usb", "{}", R"({"priority":true})", 1);
        row("set /system/bluetooth/enable", "true", "/system/bluetooth", "{}", R"({"enable":true})", 1);
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

    void knowsNoOtherPaths()
    {
        QVERIFY(!getHandlerFor(QStringLiteral("/preset/dsp/mixer/7")));
        QVERIFY(!setHandlerFor(QStringLiteral("/preset/dsp/voice_cue/0/gain")));
        QVERIFY(!setHandlerFor(QStringLiteral("/control/identify")));
    }
};

QTEST_APPLESS_MAIN(ReplyHandlersTest)
#include "tst_reply_handlers.moc"
