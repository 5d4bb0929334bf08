#include "host/modal_box.h"
#include "tests/host/bare_plugin.h"
#include "tests/support/box_answerer.h"

#include <QApplication>
#include <QLabel>
#include <QPushButton>
#include <QTest>

/// What happens when the device does not answer, disappears, or the host has had enough.
class DeviceLossTest : public QObject
{
    Q_OBJECT

public slots:
    void destroyPlugin() { delete m_host->plugin; }

private slots:
    void init() { m_host.reset(new HostSide); }

    void asksAfterATimeout_data()
    {
        QTest::addColumn<QByteArray>("request");
        QTest::addColumn<int>("answer");
        QTest::addColumn<QByteArray>("told");
        const auto row = [](const char *name, const char *request, int answer, const char *told) {
            QTest::newRow(name) << QByteArray(request) << answer << QByteArray(told);
        };
        row("retry", "command A", QMessageBox::Retry, "timeout;send KBX A;");
        row("cancel", "query A", QMessageBox::Cancel, "timeout;close;");
        row("no answer", "command A", QMessageBox::NoButton, "timeout;");
        row("retry, binary", "aes-command A", QMessageBox::Retry, "aes KBX A;");
        row("cancel, binary", "aes-query A", QMessageBox::Cancel, "close;");
    }

    void asksAfterATimeout()
    {
        QFETCH(QByteArray, request);
        QFETCH(int, answer);
        QFETCH(QByteArray, told);
        const bool ignore = answer == QMessageBox::NoButton;
        support::BoxAnswerer answerer(ignore ? QMessageBox::Cancel : QMessageBox::StandardButton(answer));
        if (ignore)
            answerer.setWhileOpen([] { delete QApplication::activeModalWidget(); });
        m_host->plugin->setVelmarAsciiTimeout(100);
        m_host->run("attach;" + request + ";await;forget");
        // What is sent again stays in flight.
        m_host->plugin->setVelmarAsciiTimeout(60000);
        QTRY_COMPARE(m_host->plugin->told, told);
        QCOMPARE(answerer.seen().size(), 1);
        const support::SeenBox box = answerer.seen().constFirst();
        QCOMPARE(box.text, QStringLiteral("Warning:  Communications with the device have timed out."));
        QCOMPARE(box.informativeText, QStringLiteral("Do you want to retry or cancel?"));
        QCOMPARE(box.detailedText, QStringLiteral("Canceling the operation will close the control plugin."));
        QCOMPARE(box.icon, QMessageBox::Warning);
        QCOMPARE(box.buttons, (QStringList{QStringLiteral("Cancel"), QStringLiteral("Retry")}));
        QCOMPARE(box.defaultButton, QStringLiteral("Retry"));
    }

    void goesOnAfterARetry()
    {
        support::BoxAnswerer answerer(QMessageBox::Retry);
        answerer.setWhileOpen([this] { m_host->run("timeout"); });
        // The binary request shows that the query has had its time to leave, and has not.
        m_host->run("attach;command A;await;forget;timeout;query B;aes-command X;await");
        QCOMPARE(m_host->plugin->told, QByteArray("timeout;send KBX A;aes KBX X;"));
        QCOMPARE(answerer.seen().size(), 1);
        m_host->run("forget;answer {}");
        QCOMPARE(m_host->plugin->told, QByteArray("gui;send KBX B;"));
        m_host->run("timeout");
        QCOMPARE(answerer.seen().size(), 2);
    }

    void dropsTheRequestOfAnUnwatchedDevice()
    {
        m_host->plugin->setVelmarAsciiTimeout(30);
        m_host->run("attach-only;command A;await;lost");
        QTRY_COMPARE(m_host->plugin->told, QByteArray("send KBX A;timeout;"));
        m_host->run("command B;await");
        QVERIFY(m_host->plugin->getNoConnectFlag());
    }

    void tellsOfALossOnce()
    {
        support::BoxAnswerer answerer(QMessageBox::Ok);
        answerer.setWhileOpen([this] { m_host->run("timeout;aes-timeout"); });
        m_host->run("attach;command A;await;forget;lost");
        QCOMPARE(m_host->plugin->told, QByteArray());
        QTRY_COMPARE(m_host->plugin->told, QByteArray("available;view;close;"));
        m_host->run("timeout;aes-timeout");
        m_host->plugin->devicePresenceChanged();
        QCOMPARE(answerer.seen().size(), 1);
        const support::SeenBox box = answerer.seen().constFirst();
        QCOMPARE(box.text, QStringLiteral("Warning:  Communications with the device have failed."));
        QCOMPARE(box.informativeText,
                 QStringLiteral("The control plugin will be closed, as the device\r\n has been lost on the "
                                "currently selected network."));
        QCOMPARE(box.detailedText, QStringLiteral("Closing the control plugin."));
        QCOMPARE(box.buttons, QStringList{QStringLiteral("OK")});
    }

    void losesTheDeviceWhileAsking()
    {
        support::BoxAnswerer question(QMessageBox::Retry);
        support::BoxAnswerer message(QMessageBox::Ok);
        question.setWhileOpen([this] {
            m_host->run("lost");
            QCoreApplication::sendPostedEvents(m_host->plugin);
        });
        m_host->run("attach;command A;await;forget;timeout");
        QCOMPARE(m_host->plugin->told, QByteArray("timeout;available;view;close;"));
        QCOMPARE(message.seen().size(), 1);
    }

    void dropsRequestsWithoutADevice()
    {
        const QByteArray dropped("Command dropped, no device is attached:;    KBX - ");
        m_host->run("command A;query B;direct C");
        QTRY_COMPARE(m_host->plugin->logged, dropped + "A;" + dropped + "B;");
        m_host->run("aes-command D;forget");
        QTRY_COMPARE(m_host->plugin->logged, dropped + "D;");
        QCOMPARE(m_host->plugin->sent, 0);
        m_host->run("attach;command E;await;aes-command F;await");
    }

    void letsGoOfTheEarlierDevice()
    {
        for (bool deleted : {false, true}) {
            pxDevice other;
            QScopedPointer<pxDevice> first(new pxDevice);
            first->setName(QStringLiteral("KBX"));
            first->setPresent(true);
            m_host->plugin->setDevice(first.data());
            m_host->run("command A;command B;query C;await;aes-command D;await");
            if (deleted)
                first.reset();
            m_host->plugin->setDevice(&other);
            m_host->run("forget;from KBX");
            if (first) {
                first->setPresent(false);
                first->setProductName(QStringLiteral("renamed"));
            }
            QCoreApplication::sendPostedEvents(m_host->plugin);
            QCOMPARE(m_host->plugin->told, QByteArray());
            other.setName(QStringLiteral("other"));
            QCOMPARE(m_host->plugin->told, QByteArray("changed;"));
            m_host->run("forget;command E;await;from other;aes-command F;await");
            QCOMPARE(m_host->plugin->told, QByteArray("send KBX E;gui;aes KBX F;"));
        }
    }

    void showsWhatTheDeviceIsCalledAsItIs()
    {
        support::BoxAnswerer message(QMessageBox::Ok);
        QList<Qt::TextFormat> formats;
        message.setWhileOpen([&] {
            for (const QLabel *label : QApplication::activeModalWidget()->findChildren<QLabel *>())
                formats.append(label->textFormat());
        });
        m_host->run("attach;lost");
        QTRY_VERIFY(!formats.isEmpty());
        QCOMPARE(formats.count(Qt::PlainText), formats.size());
    }

    void worksAgainWithTheNextDevice_data()
    {
        QTest::addColumn<bool>("whileTold");
        QTest::newRow("attached afterwards") << false;
        QTest::newRow("attached while the box is open") << true;
    }

    void worksAgainWithTheNextDevice()
    {
        QFETCH(bool, whileTold);
        pxDevice other;
        other.setName(QStringLiteral("other"));
        other.setPresent(true);
        support::BoxAnswerer message(QMessageBox::Ok);
        if (whileTold)
            message.setWhileOpen([&] { m_host->plugin->setDevice(&other); });
        m_host->run("attach;command A;await;forget;lost");
        QTRY_COMPARE(message.seen().size(), 1);
        QCoreApplication::processEvents();
        if (!whileTold)
            m_host->plugin->setDevice(&other);
        // Who asked for a close did so for the lost device.
        QTRY_COMPARE(m_host->plugin->told,
                     QByteArray(whileTold ? "available;view;changed;" : "available;view;close;changed;"));
        support::BoxAnswerer retry(QMessageBox::Retry);
        m_host->run("forget;command B;await;timeout");
        QCOMPARE(m_host->plugin->told, QByteArray("send KBX B;timeout;send KBX B;"));
        QCOMPARE(retry.seen().size(), 1);
    }

    void warnsOnceAtATime()
    {
        support::BoxAnswerer answerer(QMessageBox::Ok);
        answerer.setWhileOpen([this] { m_host->run("answer NACK LOAD 1;answer NACK LOAD 1"); });
        m_host->run("attach;command A;command B;command C;command D;await;forget;answer NACK LOAD 1");
        QCOMPARE(answerer.seen().size(), 1);
        // Three answers have ended three requests, each once.
        const QByteArray told = m_host->plugin->told;
        QCOMPARE(told.count("send"), 2);
        QVERIFY2(told.contains("send KBX B") && told.endsWith("(no preset saved);"), told);
    }

    void answerAboutAnEarlierDeviceIsIgnored()
    {
        pxDevice other;
        for (QMessageBox::StandardButton answer : {QMessageBox::Retry, QMessageBox::Cancel}) {
            support::BoxAnswerer answerer(answer);
            answerer.setWhileOpen([&] { m_host->plugin->setDevice(&other); });
            m_host->run("attach;command A;await;forget;timeout");
            QCOMPARE(m_host->plugin->told, QByteArray("timeout;changed;"));
        }
    }

    void survivesItsHost_data()
    {
        QTest::addColumn<QByteArray>("signal");
        QTest::addColumn<QByteArray>("script");
        const auto rows = [](const char *signal, std::initializer_list<const char *> scripts) {
            for (const QByteArray script : scripts)
                QTest::newRow((signal + (": " + script)).constData()) << QByteArray(signal) << script;
        };
        rows("deviceChanged()", {"attach", "load 1"});
        rows("deviceAvailabilityChanged()", {"attach;lost"});
        rows("sendVelmarAsciiMsg(QString,pxDevice::e_dev_type,QByteArray)",
             {"attach;query A", "attach;timeout"});
        rows("sendVelmarAES67Msg(QString,pxDevice::e_dev_type,QByteArray)", {"attach;aes-command A"});
        rows("updateGuiData()", {"query A", "aes-query A"});
        rows("logData(QString)", {"command A", "attach;command A", "attach;answer ACK SAVE"});
        rows("updateMainWindowStatus(QString)",
             {"save 1", "load 1", "attach;answer ACK SAVE", "attach;answer ACK LOAD",
              "attach;answer NACK LOAD"});
        rows("updatePluginStatus(QString,bool)", {"stored A", "attach;answer ACK SAVE"});
        rows("sendVelmarAsciiMsgTimeout()", {"attach;timeout"});
        rows("switchToDeviceView()", {"attach;lost", "timeout"});
        rows("pluginRequestClose()", {"attach;lost", "timeout", "aes-timeout"});
    }

    void survivesItsHost()
    {
        QFETCH(QByteArray, signal);
        QFETCH(QByteArray, script);
        support::BoxAnswerer question(QMessageBox::Retry);
        support::BoxAnswerer message(QMessageBox::Ok);
        signal.prepend(QByteArray::number(QSIGNAL_CODE));
        QVERIFY(connect(m_host->plugin, signal.constData(), this, SLOT(destroyPlugin())));
        m_host->run(script);
        QTRY_VERIFY(!m_host->plugin);
    }

    void survivesItsHostWithABoxOpen_data()
    {
        QTest::addColumn<QByteArray>("script");
        QTest::addColumn<int>("button");
        QTest::newRow("time-out") << QByteArray("attach;timeout") << int(QMessageBox::Retry);
        QTest::newRow("binary time-out") << QByteArray("attach;aes-timeout") << int(QMessageBox::Retry);
        QTest::newRow("loss") << QByteArray("attach;lost") << int(QMessageBox::Ok);
        QTest::newRow("preset") << QByteArray("attach;answer NACK LOAD") << int(QMessageBox::Ok);
    }

    void survivesItsHostWithABoxOpen()
    {
        QFETCH(QByteArray, script);
        QFETCH(int, button);
        support::BoxAnswerer answerer{QMessageBox::StandardButton(button)};
        bool closed = false;
        answerer.setWhileOpen([this, &closed] {
            destroyPlugin();
            closed = !QApplication::activeModalWidget();
        });
        m_host->run(script);
        QTRY_COMPARE(answerer.seen().size(), 1);
        QVERIFY(closed);
    }

    void blocksOnlyItsWindow()
    {
        QPushButton editor;
        QPushButton panel; // of the host
        QByteArray pressed;
        connect(&editor, &QPushButton::clicked, this, [&pressed] { pressed += "editor;"; });
        connect(&panel, &QPushButton::clicked, this, [&pressed] { pressed += "panel;"; });
        for (QPushButton *button : {&editor, &panel}) {
            button->show();
            QVERIFY(QTest::qWaitForWindowExposed(button));
        }
        const auto press = [&] {
            for (QPushButton *button : {&editor, &panel})
                QTest::mouseClick(button->windowHandle(), Qt::LeftButton, {}, button->rect().center());
            pressed += "answer;";
        };
        support::BoxAnswerer answerer(QMessageBox::Ok);
        answerer.setWhileOpen([&] {
            press();
            // The answer to the first counts only once that to the second has come.
            support::BoxAnswerer second(QMessageBox::Ok);
            second.setWhileOpen(press);
            runModalBox({}, &panel, &panel);
        });
        runModalBox({}, &editor, &editor);
        QCOMPARE(pressed, QByteArray("panel;answer;answer;"));
    }

private:
    QScopedPointer<HostSide> m_host;
};

QTEST_MAIN(DeviceLossTest)
#include "tst_device_loss.moc"
