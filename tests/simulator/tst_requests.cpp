#include "simulator/device_model.h"

#include <QJsonDocument>
#include <QTest>

using sim::DeviceModel;

namespace {

QJsonObject object(const QByteArray &reply)
{
    return QJsonDocument::fromJson(reply).object();
}

QByteArray ask(DeviceModel *model, const char *request)
{
    return model->answer(QByteArray(request));
}

QJsonValue valueOf(DeviceModel *model, const QString &path)
{
    return object(model->answer("{\"get\":\"" + path.toLatin1() + "\"}")).value(QStringLiteral("value"));
}

} // namespace

/// What the device answers to a request, byte for byte, and what the request changes.
class RequestsTest : public QObject
{
    Q_OBJECT

private slots:
    void reply_data();
    void reply();
    void refusal_data();
    void refusal();
    void sectionSet();
    void defaults();
};

void RequestsTest::reply_data()
{
    QTest::addColumn<QByteArray>("request");
    QTest::addColumn<QByteArray>("expected");
    const auto row = [](const char *name, const char *request, const char *expected) {
        QTest::newRow(name) << QByteArray(request) << QByteArray(expected);
    };
    row("section", R"({"get":"/system/usb"})",
        R"({"cmd":"get","param":"/system/usb","result":"OK","value":{"mode":"2x2","priority":false}})");
    row("leaf", R"({"get":"/status/bluetooth/list_size"})",
        R"({"cmd":"get","param":"/status/bluetooth/list_size","result":"OK","value":3})");
    row("array element", R"({"get":"/preset/dsp/mixer/6/1"})",
        R"({"cmd":"get","param":"/preset/dsp/mixer/6/1","result":"OK","value":-3})");
    row("mute as number", R"({"set":"/preset/dsp/dante_rx/2/mute", "value":1})",
        R"({"cmd":"set","param":"/preset/dsp/dante_rx/2/mute","result":"OK","value":true})");
    row("gain stays a whole number", R"({"set":"/preset/dsp/bt_source/0/gain", "value":-12.0})",
        R"({"cmd":"set","param":"/preset/dsp/bt_source/0/gain","result":"OK","value":-12})");
    row("slot as text", R"({"set":"/control/save_preset", "value":"7"})",
        R"({"cmd":"set","param":"/control/save_preset","result":"OK","value":7})");
    row("name", u8R"({"set":"/system/bluetooth/name","value":"\"Büro\" \\ 📱"})",
        u8R"({"cmd":"set","param":"/system/bluetooth/name","result":"OK","value":"\"Büro\" \\ 📱"})");
    row("file order",
        R"({"set":"/control/fwdl","value":{"target":"VC_BT_PAIR","uri":"tftp://127.0.0.2:69/a"}})",
        R"({"cmd":"set","param":"/control/fwdl","result":"OK",)"
        R"("value":{"target":"VC_BT_PAIR","uri":"tftp://127.0.0.2:69/a"}})");
    row("text query", "QUERY\r", "ACK QUERY KBX-0001 1.2.0\r");
    row("text save", "SAVE 2\r", "ACK SAVE 2\r");
    row("text load, never stored", "LOAD 3\r", "NACK LOAD 3\r");
    row("unknown text", "\x01\x02", "NACK\r");
    row("empty", "", "NACK\r");
}

void RequestsTest::reply()
{
    QFETCH(QByteArray, request);
    QFETCH(QByteArray, expected);
    DeviceModel model(sim::Identity(QStringLiteral("KBX-0001")), 1);
    QCOMPARE(model.answer(request), expected);
}

void RequestsTest::refusal_data()
{
    QTest::addColumn<QByteArray>("request");
    QTest::addColumn<QString>("reason");
    const auto row = [](const char *name, const char *request, const char *reason) {
        QTest::newRow(name) << QByteArray(request) << QString::fromUtf8(reason);
    };
    row("broken JSON", R"({"get":)", "no JSON: ");
    row("neither get nor set", R"({"put":"/info"})", "no request: expected one of");
    row("set without value", R"({"set":"/system/usb/mode"})", "no request: a set needs a \"value\"");
    row("other case", R"({"get":"/System/usb"})", "/System/usb: no such parameter");
    row("get of a command", R"({"get":"/control/reboot"})", "/control/reboot: a command");
    row("section of which one member can be set",
        R"({"set":"/status/bluetooth/list/0","value":{"keep":false}})",
        "/status/bluetooth/list/0: read-only");
    row("gain too high", R"({"set":"/preset/dsp/dante_tx/0/gain", "value":21})",
        "/preset/dsp/dante_tx/0/gain: 21 is not a whole number from -100 to 20");
    row("gain not whole", R"({"set":"/preset/dsp/dante_tx/0/gain", "value":1.5})",
        "/preset/dsp/dante_tx/0/gain: 1.5");
    row("tone too low", R"({"set":"/system/function_gen/frequency", "value":9})",
        "/system/function_gen/frequency: 9");
    row("empty name", R"({"set":"/system/bluetooth/name","value":""})", "/system/bluetooth/name: 0 bytes");
    row("short address", R"({"set":"/system/network","value":{"static_ip":"10.1"}})",
        "/system/network/static_ip: \"10.1\" is not a dotted IPv4 address");
    row("no netmask", R"({"set":"/system/network/static_netmask","value":"255.0.255.0"})",
        "/system/network/static_netmask: 255.0.255.0 is not a netmask");
    row("unknown member", R"({"set":"/system/usb","value":{"modus":"2x2"}})",
        "/system/usb: no member \"modus\"");
    row("reboot false", R"({"set":"/control/reboot", "value":false})", "/control/reboot: expected true");
    row("never stored", R"({"set":"/control/load_preset", "value":"5"})",
        "/control/load_preset: preset 5 was never");
    row("no phone", R"({"set":"/control/bluetooth/next","value":true})",
        "/control/bluetooth/next: no phone is");
    row("no target", R"({"set":"/control/fwdl","value":{"uri":"tftp://1.2.3.4:69/a"}})",
        "/control/fwdl: no target");
}

void RequestsTest::refusal()
{
    QFETCH(QByteArray, request);
    QFETCH(QString, reason);
    DeviceModel model(sim::Identity(QStringLiteral("KBX-0001")), 1);
    const QJsonObject before = model.toJson();

    const QJsonObject reply = object(model.answer(request));

    const QString result = reply.value(QStringLiteral("result")).toString();
    QVERIFY2(result.startsWith(reason), qPrintable(result));
    QVERIFY(reply.value(QStringLiteral("cmd")).isString());
    QVERIFY(reply.value(QStringLiteral("param")).isString());
    QVERIFY(!reply.contains(QStringLiteral("value")));
    QCOMPARE(model.toJson(), before);
}

/// A snapshot sets whole sections: a good one is taken whole, of a bad one nothing is taken.
void RequestsTest::sectionSet()
{
    DeviceModel model(sim::Identity(QStringLiteral("KBX-0001")), 1);
    ask(&model,
        R"({"set":"/preset/dsp/usb_playback",)"
        R"("value":[{"gain":-1,"invert":1,"mute":false},{"mute":true}]})");
    QCOMPARE(
        QJsonDocument(valueOf(&model, QStringLiteral("/preset/dsp/usb_playback")).toArray())
            .toJson(QJsonDocument::Compact),
        QByteArray(R"([{"gain":-1,"invert":true,"mute":false},{"gain":-6,"invert":false,"mute":true}])"));

    ask(&model, R"({"set":"/preset/dsp/usb_playback","value":[{"gain":5},{"gain":99}]})");
    QCOMPARE(valueOf(&model, QStringLiteral("/preset/dsp/usb_playback/0/gain")).toInt(), -1);

    ask(&model, R"({"set":"/preset/dsp/mixer/3","value":[1,2,3,4,5,6,7,8,9,10]})");
    QCOMPARE(valueOf(&model, QStringLiteral("/preset/dsp/mixer/3/9")).toInt(), 10);
}

void RequestsTest::defaults()
{
    DeviceModel model(sim::Identity(QStringLiteral("KBX-0001")), 1);
    const QJsonObject fresh = model.toJson();
    ask(&model, R"({"set":"/system/bluetooth/name","value":"Desk"})");
    ask(&model, R"({"set":"/control/bluetooth/clear_list","value":true})");
    ask(&model, R"({"set":"/control/save_preset", "value":"0"})");
    QCOMPARE(valueOf(&model, QStringLiteral("/status/bluetooth/list_size")).toInt(), 1); // one is protected

    ask(&model, R"({"set":"/control/defaults","value":1})");

    QCOMPARE(model.toJson(), fresh);
}

QTEST_GUILESS_MAIN(RequestsTest)
#include "tst_requests.moc"
