#include "protocol/messages.h"
#include "protocol/paths.h"
#include "protocol/value_words.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QTest>

#include <cmath>
#include <limits>

/// Messages to the byte, and the words that stand in them.
class MessagesTest : public QObject
{
    Q_OBJECT

private slots:
    void buildsMessages_data()
    {
        QTest::addColumn<QByteArray>("message");
        QTest::addColumn<QByteArray>("expected");
        const auto row = [](const char *name, const QByteArray &message, const char *expected) {
            QTest::newRow(name) << message << QByteArray(expected);
        };
        const QJsonObject network{{QStringLiteral("static_netmask"), QStringLiteral("255.0.0.0")},
                                  {QStringLiteral("ip_mode"), QStringLiteral("dhcp")},
                                  {QStringLiteral("static_ip"), QStringLiteral("10.0.0.2")},
                                  {QStringLiteral("static_gateway"), QStringLiteral("10.0.0.1")}};
        row("get", message::get(path::Usb), R"({"get":"/system/usb"})");
        row("on", message::set(path::Identify, true), R"({"set":"/control/identify","value":true})");
        row("off", message::set(path::Identify, false), R"({"set":"/control/identify","value":false})");
        row("integer", message::set(path::Defaults, 1), R"({"set":"/control/defaults","value":1})");
        row("text", message::set(path::BluetoothName, QString::fromUtf8("Bür\"o")),
            "{\"set\":\"/system/bluetooth/name\",\"value\":\"B\xc3\xbcr\\\"o\"}");
        row("object", message::set(path::Network, network),
            R"({"set":"/system/network","value":{"ip_mode":"dhcp","static_gateway":"10.0.0.1",)"
            R"("static_ip":"10.0.0.2","static_netmask":"255.0.0.0"}})");
        row("rows", message::set(path::Mixer, QJsonArray{QJsonArray{-100, 0}, QJsonArray()}),
            R"({"set":"/preset/dsp/mixer","value":[[-100,0],[]]})");
        row("gain", message::setNumber(QStringLiteral("/preset/dsp/dante_rx/0/gain"), -12),
            R"({"set":"/preset/dsp/dante_rx/0/gain", "value":-12})");
        row("preset", message::setQuotedNumber(path::SavePreset, 2),
            R"({"set":"/control/save_preset", "value":"2"})");
        row("metering", message::requestMetering(), R"({"set":"/control/req_metering", "value":100})");
        row("reboot", message::reboot(), R"({"set":"/control/reboot", "value":true})");
        row("index", message::get(path::indexed(path::MixerRow, 6)), R"({"get":"/preset/dsp/mixer/6"})");
    }

    void buildsMessages()
    {
        QFETCH(QByteArray, message);
        QTEST(message, "expected");
    }

    void truncatesGains()
    {
        QCOMPARE(message::wholeGain(-12.7), -12);
        QCOMPARE(message::wholeGain(19.9), 19);
        QCOMPARE(message::wholeGain(1e30), std::numeric_limits<int>::max());
        QCOMPARE(message::wholeGain(-HUGE_VAL), std::numeric_limits<int>::min());
        QCOMPARE(message::wholeGain(std::nan("")), 0);
    }

    void translatesChoices()
    {
        const char *modes[] = {"basic", "reconnect", "exclusive"};
        const char *profiles[] = {"both", "media", "hfp"};
        for (int i = 0; i < 3; ++i) {
            QCOMPARE(words::connectionModeWord(i), QLatin1String(modes[i]));
            QCOMPARE(words::connectionModeIndex(QLatin1String(modes[i])), i);
            QCOMPARE(words::profileWord(i), QLatin1String(profiles[i]));
            QCOMPARE(words::profileIndex(QLatin1String(profiles[i])), i);
        }
        QCOMPARE(words::connectionModeIndex(QStringLiteral("Basic")), 2);
        QCOMPARE(words::profileIndex(QString()), 2);
    }

    void translatesUsbModes()
    {
        const QHash<QString, int> options{{QStringLiteral("2x2"), 0},
                                          {QStringLiteral("speakerphone_no_ec"), 4},
                                          {QStringLiteral("speakerphone_ec"), 4 + 2},
                                          {QStringLiteral("speakerphone_telephony_no_ec"), 4 + 1},
                                          {QStringLiteral("speakerphone_telephony_ec"), 4 + 2 + 1}};
        for (auto it = options.begin(); it != options.end(); ++it) {
            const words::UsbMode mode = words::usbMode(it.key());
            QCOMPARE(4 * mode.speakerphone + 2 * mode.echoCancellation + mode.telephony, it.value());
            QCOMPARE(words::usbModeWord(mode), it.key());
        }
    }
};

QTEST_APPLESS_MAIN(MessagesTest)
#include "tst_messages.moc"
