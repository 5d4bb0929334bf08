#include "tests/host/bare_plugin.h"
#include "tests/support/box_answerer.h"

#include <QElapsedTimer>
#include <QTest>
#include <QTimer>

/// What leaves through the request channel, in which order, and what is said about it.
class RequestChannelTest : public QObject
{
    Q_OBJECT

private slots:
    void keepsTheOrder_data()
    {
        QTest::addColumn<QByteArray>("script");
        QTest::addColumn<QByteArray>("told");
        const auto row = [](const char *name, const char *script, const char *told) {
            QTest::newRow(name) << QByteArray(script) << QByteArray(told);
        };
        row("one at a time", "command A;command B;await;answer {};answer {}", "send KBX A;send KBX B;gui;");
        row("commands first", "query A;query B;await;command C;answer {};answer {}",
            "gui;send KBX A;send KBX C;gui;send KBX B;");
        row("nothing waits", "process", "gui;");
        row("an answer that nobody awaits", "answer {}", "gui;");
        row("others answer", "command A;await;command B;from KBX2;from kbx;from ", "send KBX A;");
        row("cleared", "command A;await;command C;query C;clear;command B;await", "send KBX A;send KBX B;");
        row("settings", "stored A;await", "DEVICE CONNECTED - SETTINGS HAVE CHANGED;send KBX A;");
        row("unmarked", "unmark", "Device connected...;");
        row("past the queue", "command A;await;direct B;answer {}", "send KBX A;direct KBX B;gui;");
        row("store", "save 12;await", "Saving preset to device...;send KBX SAVE 12\r;");
        row("recall", "load 3;await", "Loading preset from device...;changed;send KBX LOAD 3\r;");
        row("attached twice", "attach;command A;await;answer {}", "changed;send KBX A;gui;");
        row("binary", "aes-query B;aes-command A1;aes-query C;await;aes-answer ..A;aes-answer ..B",
            "aes KBX A1;gui;aes KBX B;gui;aes KBX C;");
        row("binary, another request", "aes-command A;aes-command B;await;aes-answer A.B", "aes KBX A;");
        row("binary, others", "aes-command A;aes-command B;await;aes-from kbx", "aes KBX A;");
    }

    void keepsTheOrder()
    {
        QFETCH(QByteArray, script);
        HostSide host;
        host.run("attach;forget;" + script);
        QTEST(host.plugin->told, "told");
    }

    void waitsForTheAnswer()
    {
        HostSide host;
        host.plugin->setVelmarAsciiTimeout(40000);
        const QTimer *timer = host.plugin->getVelmarAsciiTimer();
        QElapsedTimer clock;
        clock.start();
        host.run("attach;query A");
        QVERIFY(!timer->isActive());
        QTRY_COMPARE(host.plugin->sent, 1);
        QVERIFY2(clock.elapsed() >= 4, "requests of one action get 5 ms to arrive together");
        QCOMPARE(host.plugin->logged, QByteArray("Command Request:;    KBX - A;"));
        host.run("from KBX2");
        QVERIFY(timer->isActive());
        QCOMPARE(timer->interval(), 40000);
        host.run("answer {}");
        QVERIFY(!timer->isActive());
    }

    void staysInStepWithSlotsThatAct()
    {
        HostSide host;
        connect(host.plugin, &PlexoPlugin::sendVelmarAsciiMsg, &host.device, [&host] {
            if (host.plugin->sent != 3)
                host.run("answer {}");
        });
        connect(host.plugin, &PlexoPlugin::updateGuiData, &host.device, [&host] {
            if (host.plugin->sent == 2)
                host.run("command C;process");
        });
        host.run("attach;command A;command B;query D;forget");
        // The query waits: a slot has started a command while it was about to be sent.
        QTRY_COMPARE(host.plugin->told, QByteArray("send KBX A;send KBX B;gui;send KBX C;"));
        host.run("forget;answer {}");
        QCOMPARE(host.plugin->told, QByteArray("gui;send KBX D;gui;"));
        QVERIFY(!host.plugin->getVelmarAsciiTimer()->isActive());
    }

    void readsAnswers_data()
    {
        QTest::addColumn<QByteArray>("answer");
        QTest::addColumn<bool>("logged");
        QTest::addColumn<QByteArray>("told");
        QTest::addColumn<bool>("settingsChanged");
        const auto row = [](const char *answer, bool logged, const QByteArray &told, bool settingsChanged) {
            QTest::newRow(answer) << QByteArray(answer) << logged << told + "gui;" << settingsChanged;
        };
        const char saved[] = "Preset saved to device.;Device connected...;";
        row("xACK SAVEx", true, saved, false);
        row("NACK SAVE", true, "", true);
        row("ACK SAVE NACK", true, "", true);
        row("ACK LOAD 1", true, "Preset loaded from device.;", true);
        row("NACK LOAD 1", true, "Preset load from device failed...  (no preset saved);", true);
        row("ACK BTX", true, "", true);
        for (const char *quiet :
             {"ack save", "ACK BTS 1", "ACK BTALBUM x", "ACK BTARTIST x", "NACK BTSONG", ""})
            row(quiet, false, "", true);
    }

    void readsAnswers()
    {
        QFETCH(QByteArray, answer);
        QFETCH(bool, logged);
        HostSide host;
        support::BoxAnswerer answerer(QMessageBox::Ok);
        host.run("attach;stored A;await;forget;answer " + answer);
        QCOMPARE(host.plugin->logged, logged ? "Command Response:;    KBX - " + answer + ';' : QByteArray());
        QTEST(host.plugin->told, "told");
        QTEST(host.plugin->getSettingsChanged(), "settingsChanged");
        QCOMPARE(answerer.seen().size(), answer.startsWith("NACK LOAD") ? 1 : 0);
        for (const support::SeenBox &box : answerer.seen()) {
            QCOMPARE(box.text, QStringLiteral("Warning:  Preset load from device."));
            QCOMPARE(box.informativeText,
                     QStringLiteral("A preset was never stored to that location on the device."));
        }
        host.device.setPresent(false);
        QVERIFY(!host.plugin->getSettingsChanged());
    }
};

QTEST_MAIN(RequestChannelTest)
#include "tst_request_channel.moc"
