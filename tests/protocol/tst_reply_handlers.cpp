#include "protocol/messages.h"
#include "protocol/settings.h"

#include <QJsonDocument>
#include <QTest>

#include <limits>

Q_DECLARE_METATYPE(ReplyHandler)
Q_DECLARE_METATYPE(Section)

namespace {

QJsonObject parsed(const QByteArray &json)
{
    return QJsonDocument::fromJson(json).object();
}

/// What is done with the reply to the section's get of that number.
ReplyHandler get(Section section, int number)
{
    return getsOf(section).at(number).store;
}

/// Stands in for the editor window: caches without widgets.
class FakeWindow : public DeviceStateOwner
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
        QTest::addColumn<ReplyHandler>("handler");
        QTest::addColumn<Section>("section");
        for (const char *column : {"value", "before", "after"})
            QTest::addColumn<QByteArray>(column);
        QTest::addColumn<int>("refreshes");
        const auto row = [](const char *name, const ReplyHandler &handler, Section section, const char *value,
                            const char *before, const char *after, int refreshes = 0) {
            QTest::newRow(name) << handler << section << QByteArray(value) << QByteArray(before)
                                << QByteArray(after) << refreshes;
        };
        const Section bt = Section::StatusBluetooth;
        row("state", get(bt, 0), bt, R"("idle")", "null", R"({"state":"idle"})");
        row("state that is no text", get(bt, 0), bt, "7", R"({"device":{}})", R"({"device":{},"state":""})");
        row("list size", get(bt, 1), bt, "2", "null", R"({"list_size":2})");
        row("phone ahead of the list", get(bt, 4), bt, R"({"a":1})", "null", R"({"list":[{},{},{"a":1}]})");
        row("phone again", get(bt, 2), bt, "true", R"({"list":[{"a":1},{"b":1}]})",
            R"({"list":[{},{"b":1}]})");
        row("connected phone", get(bt, 10), bt, R"({"name":"a"})", "null", R"({"device":{"name":"a"}})");
        row("mixer row", get(Section::Mixer, 0), Section::Mixer, "[1]", "null", "[[1]]");
        row("mixer row again", get(Section::Mixer, 1), Section::Mixer, "[9]", "[[1],[2],[3]]",
            "[[1],[9],[3]]");
        row("mixer row ahead", get(Section::Mixer, 2), Section::Mixer, "[9]", "[[1]]", "[[1],[],[9]]");
        const auto set = [&row](const char *name, const Setting &setting, const char *value,
                                const char *before, const char *after, int refreshes = 0) {
            row(name, setting.confirmation(), setting.section, value, before, after, refreshes);
        };
        set("unheard of channel", setting::channelGain(Section::DanteRx, 4), "1", "[{}]", "[{}]");
        set("level that is no number", setting::ToneAmplitude, R"("loud")", "{}", R"({"amplitude":0})");
        set("priority", setting::UsbPriority, "true", "{}", R"({"priority":true})", 1);
        set("interface", setting::BluetoothEnable, "true", "{}", R"({"enable":true})", 1);
        set("cue", setting::cueEnable(1), "true", "[{},{},{}]", R"([{},{"enable":true},{}])", 1);
        set("notifications", setting::NotificationsEnable, "true", R"({"port":1})",
            R"({"enable":true,"port":1})");
        for (const Setting &whole : {setting::Notifications, setting::Metering, setting::Network})
            set(qPrintable(whole.path()), whole, R"({"port":2})", R"({"ip":"a"})", R"({"port":2})", 1);
    }

    void storesReplies()
    {
        QFETCH(ReplyHandler, handler);
        QFETCH(Section, section);
        QFETCH(QByteArray, value);
        QFETCH(QByteArray, before);
        QFETCH(QByteArray, after);
        FakeWindow window;
        if (before != "null")
            window.caches()[section] = parsed("{\"value\":" + before + '}');
        handler(window, parsed(R"({"result":"OK","value":)" + value + '}'));
        QCOMPARE(QJsonDocument(window.caches()[section]).toJson(QJsonDocument::Compact),
                 "{\"value\":" + after + '}');
        QTEST(window.refreshes, "refreshes");
    }

    void refusedSetChangesNothing()
    {
        FakeWindow window;
        setting::UsbPriority.confirmation()(window, parsed(R"({"result":"no","value":true})"));
        QVERIFY(window.caches()[Section::Usb].isEmpty() && window.refreshes == 0);
    }

    void gainsLoseTheirFraction()
    {
        QCOMPARE(message::wholeGain(-6.7), -6);
        QCOMPARE(message::wholeGain(1e12), std::numeric_limits<int>::max());
        QCOMPARE(message::wholeGain(std::numeric_limits<double>::quiet_NaN()), 0);
    }
};

QTEST_APPLESS_MAIN(ReplyHandlersTest)
#include "tst_reply_handlers.moc"
