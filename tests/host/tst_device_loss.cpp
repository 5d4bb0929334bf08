#include "tests/host/bare_plugin.h"
#include "tests/support/box_answerer.h"

#include <QApplication>
#include <QTest>

namespace {

QString failedText()
{
    return QStringLiteral("Warning:  Communications with the device have failed.");
}

} // namespace

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
        QTest::addColumn<QString>("request");
        QTest::addColumn<int>("answer");
        QTest::addColumn<QString>("told");
        const auto row = [](const char *name, const char *request, int answer, const char *told) {
            QTest::newRow(name) << QString::fromLatin1(request) << answer << QString::fromLatin1(told);
        };
        row("retry", "command A", QMessageBox::Retry, "timeout;send KBX A");
        row("cancel", "query A", QMessageBox::Cancel, "timeout;close");
        row("no answer", "command A", QMessageBox::NoButton, "timeout");
        row("retry, binary", "aes-command A", QMessageBox::Retry, "aes KBX A");
        row("cancel, binary", "aes-query A", QMessageBox::Cancel, "close");
    }

    void asksAfterATimeout()
    {
        QFETCH(QString, request);
        QFETCH(int, answer);
        QFETCH(QString, told);
        const bool ignore = answer == QMessageBox::NoButton;
        support::BoxAnswerer answerer(ignore ? QMessageBox::Cancel : QMessageBox::StandardButton(answer));
        if (ignore)
            answerer.setWhileOpen([] { delete QApplication::activeModalWidget(); });
        m_host->plugin->setVelmarAsciiTimeout(100);
        m_host->run(QStringLiteral("attach;%1;await;forget").arg(request));
        // What is sent again stays in flight.
        m_host->plugin->setVelmarAsciiTimeout(60000);
        QTRY_COMPARE(m_host->told(), told);
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
        answerer.setWhileOpen([this] { m_host->run(QStringLiteral("timeout")); });
        m_host->run(QStringLiteral("attach;command A;await;forget;timeout;query B;query C"));
        QCOMPARE(m_host->told(), QStringLiteral("timeout;send KBX A"));
        QCOMPARE(answerer.seen().size(), 1);
        m_host->run(QStringLiteral("answer {}"));
        QCOMPARE(m_host->told(), QStringLiteral("timeout;send KBX A;gui;send KBX B"));
    }

    void dropsTheRequestOfAnUnwatchedDevice()
    {
        m_host->plugin->setVelmarAsciiTimeout(30);
        m_host->run(QStringLiteral("attach-only;command A;await;lost"));
        QTRY_COMPARE(m_host->told(), QStringLiteral("send KBX A;timeout"));
        m_host->run(QStringLiteral("command B;await"));
        QVERIFY(m_host->plugin->getNoConnectFlag());
    }

    void tellsOfALossOnce()
    {
        support::BoxAnswerer answerer(QMessageBox::Ok);
        const QString late = QStringLiteral("timeout;aes-timeout");
        answerer.setWhileOpen([this, &late] { m_host->run(late); });
        m_host->run(QStringLiteral("attach;command A;await;forget;lost"));
        QCOMPARE(m_host->told(), QString());
        QTRY_COMPARE(m_host->told(), QStringLiteral("available;view;close"));
        m_host->run(late);
        m_host->plugin->devicePresenceChanged();
        QCOMPARE(answerer.seen().size(), 1);
        const support::SeenBox box = answerer.seen().constFirst();
        QCOMPARE(box.text, failedText());
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
            m_host->run(QStringLiteral("lost"));
            QCoreApplication::sendPostedEvents(m_host->plugin);
        });
        m_host->run(QStringLiteral("attach;command A;await;forget;timeout"));
        QCOMPARE(m_host->told(), QStringLiteral("timeout;available;view;close"));
        QCOMPARE(message.seen().size(), 1);
        QCOMPARE(message.seen().constFirst().text, failedText());
    }

    void dropsRequestsWithoutADevice()
    {
        m_host->run(QStringLiteral("command A;query B;aes-command C;direct D"));
        QTRY_COMPARE(m_host->plugin->logged.size(), 6);
        QCOMPARE(m_host->plugin->logged.mid(0, 2),
                 (QStringList{QStringLiteral("Command dropped, no device is attached:"),
                              QStringLiteral("    KBX - A")}));
        QCOMPARE(m_host->plugin->sent, 0);
        m_host->run(QStringLiteral("attach;command E;await;aes-command F;await"));
    }

    void letsGoOfTheEarlierDevice()
    {
        pxDevice other;
        m_host->run(QStringLiteral("attach"));
        m_host->plugin->setDevice(&other);
        m_host->run(QStringLiteral("forget;lost"));
        m_host->device.setProductName(QStringLiteral("renamed"));
        QCoreApplication::sendPostedEvents(m_host->plugin);
        QCOMPARE(m_host->told(), QString());
        other.setName(QStringLiteral("other"));
        QCOMPARE(m_host->told(), QStringLiteral("changed"));
        QCOMPARE(m_host->plugin->getDeviceName(), QStringLiteral("other"));
    }

    void survivesItsHost_data()
    {
        QTest::addColumn<QByteArray>("signal");
        QTest::addColumn<QString>("script");
        const auto row = [](const char *signal, const char *script) {
            QTest::newRow(qPrintable(QLatin1String(signal) + QLatin1String(": ") + QLatin1String(script)))
                << QByteArray(signal) << QString::fromLatin1(script);
        };
        row("deviceChanged()", "attach");
        row("devicesChanged()", "devices");
        row("deviceAvailabilityChanged()", "attach;lost");
        row("sendVelmarAsciiMsg(QString,pxDevice::e_dev_type,QByteArray)", "attach;command A");
        row("sendVelmarAsciiMsg(QString,pxDevice::e_dev_type,QByteArray)", "attach;timeout");
        row("sendVelmarAES67Msg(QString,pxDevice::e_dev_type,QByteArray)", "attach;aes-command A");
        row("sendVelmarAsciiMsgNoWait(QString,pxDevice::e_dev_type,QByteArray)", "attach;direct A");
        row("updateGuiData()", "query A");
        for (const char *script : {"note", "command A", "attach;command A", "attach;answer ACK SAVE"})
            row("logData(QString)", script);
        for (const char *script : {"save 1", "load 1", "attach;answer ACK SAVE", "attach;answer ACK LOAD",
                                   "attach;answer NACK LOAD"})
            row("updateMainWindowStatus(QString)", script);
        for (const char *script : {"stored A", "unmark", "attach;answer ACK SAVE"})
            row("updatePluginStatus(QString,bool)", script);
        row("frameworkDebug()", "debug");
        row("netInterfaceChanged()", "net");
        row("sendVelmarAsciiMsgTimeout()", "attach;timeout");
        row("switchToDeviceView()", "attach;lost");
        row("pluginRequestClose()", "attach;lost");
        row("pluginRequestClose()", "timeout");
    }

    void survivesItsHost()
    {
        QFETCH(QByteArray, signal);
        QFETCH(QString, script);
        support::BoxAnswerer question(QMessageBox::Retry);
        support::BoxAnswerer message(QMessageBox::Ok);
        const QByteArray code = QByteArray::number(QSIGNAL_CODE) + signal;
        QVERIFY(connect(m_host->plugin, code.constData(), this, SLOT(destroyPlugin())));
        m_host->run(script);
        QTRY_VERIFY(!m_host->plugin);
    }

    void survivesItsHostWithABoxOpen_data()
    {
        QTest::addColumn<QString>("script");
        QTest::addColumn<int>("button");
        QTest::newRow("time-out") << QStringLiteral("attach;timeout") << int(QMessageBox::Retry);
        QTest::newRow("binary time-out") << QStringLiteral("attach;aes-timeout") << int(QMessageBox::Retry);
        QTest::newRow("loss") << QStringLiteral("attach;lost") << int(QMessageBox::Ok);
        QTest::newRow("preset") << QStringLiteral("attach;answer NACK LOAD") << int(QMessageBox::Ok);
    }

    void survivesItsHostWithABoxOpen()
    {
        QFETCH(QString, script);
        QFETCH(int, button);
        support::BoxAnswerer answerer{QMessageBox::StandardButton(button)};
        answerer.setWhileOpen([this] { destroyPlugin(); });
        m_host->run(script);
        QTRY_VERIFY(!m_host->plugin);
        QTRY_VERIFY(!QApplication::activeModalWidget());
        QCOMPARE(answerer.seen().size(), 1);
    }

private:
    QScopedPointer<HostSide> m_host;
};

QTEST_MAIN(DeviceLossTest)
#include "tst_device_loss.moc"
