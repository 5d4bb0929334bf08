// The three ways in which the user ends an editor: close, reboot, factory reset.

#include "plugin/velmar_sample_plugin_factory.h"
#include "tests/support/box_answerer.h"
#include "tests/support/editor_session.h"

#include <QCheckBox>
#include <QSignalSpy>
#include <QtTest>

namespace {

const QString IdentifyOff = QStringLiteral("{\"set\":\"/control/identify\",\"value\":false}");

} // namespace

class EndingTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup() { m_session.reset(); }
    void asksBeforeTheDeviceIsTouched_data();
    void asksBeforeTheDeviceIsTouched();
    void closesOnceIdentifyIsOff();
    void staysOpenWhenIdentifyIsRefused();
    void factoryResetWaitsForNoAnswer();
    void rebootSwitchesIdentifyOffAndCloses();

private:
    VelmarSamplePluginFactory m_factory;
    QScopedPointer<support::EditorSession> m_session;
    QElapsedTimer m_clock;
};

void EndingTest::init()
{
    m_session.reset(new support::EditorSession(&m_factory));
    QVERIFY(m_session->goLive());
    QTRY_VERIFY(m_session->script->isIdle());
    m_clock.start();
}

void EndingTest::asksBeforeTheDeviceIsTouched_data()
{
    QTest::addColumn<QString>("button");
    QTest::addColumn<QString>("title");
    QTest::addColumn<QString>("text");
    QTest::newRow("factory reset") << "factory_reset_pushButton"
                                   << "Device Factory Reset Warning"
                                   << "Continuing with this operation will initiate a factory\nreset of the "
                                      "device.\n\nDo you wish to proceed?\n";
    QTest::newRow("reboot") << "reboot_pushButton"
                            << "Device Reboot Warning"
                            << "Continuing with this operation will close this plugin and reboot\n the "
                               "device.\n\nDo you wish to proceed?\n";
}

void EndingTest::asksBeforeTheDeviceIsTouched()
{
    QFETCH(QString, button);
    support::BoxAnswerer cancel(QMessageBox::Cancel);
    QPoint offCentre(999, 999);
    cancel.setWhileOpen([this, &offCentre] {
        const QWidget *box = QApplication::activeModalWidget();
        offCentre = box->geometry().center() - m_session->editor()->window()->geometry().center();
    });
    QCOMPARE(m_session->commandsOf([&] { m_session->click(button.toLatin1().constData()); }), QStringList());
    QCOMPARE(cancel.seen().size(), 1);
    QTEST(cancel.seen().first().title, "title");
    QTEST(cancel.seen().first().text, "text");
    QCOMPARE(cancel.seen().first().buttons, QStringList({QStringLiteral("Cancel"), QStringLiteral("OK")}));
    QCOMPARE(cancel.seen().first().defaultButton, QStringLiteral("OK"));
    QVERIFY(offCentre.manhattanLength() <= 4);
    QVERIFY(m_session->find<QWidget>("plugin_frame")->isEnabled());
}

void EndingTest::closesOnceIdentifyIsOff()
{
    QSignalSpy closing(m_session->plugin.data(), &PlexoPlugin::pluginRequestClose);
    QCOMPARE(m_session->commandsOf([this] { m_session->click("identify_checkBox"); }).size(), 1);
    QVERIFY(m_session->find<QCheckBox>("identify_checkBox")->isChecked());
    m_clock.start();
    QCOMPARE(m_session->commandsOf([this] { m_session->click("close_pushButton"); }),
             QStringList(IdentifyOff));
    QVERIFY(!m_session->find<QCheckBox>("identify_checkBox")->isChecked());
    QTRY_COMPARE(closing.count(), 1);
    QVERIFY(m_clock.elapsed() >= 500);
    QVERIFY(!m_session->plugin->getSettingsChanged());
}

void EndingTest::staysOpenWhenIdentifyIsRefused()
{
    QSignalSpy closing(m_session->plugin.data(), &PlexoPlugin::pluginRequestClose);
    m_session->script->refuse(QStringLiteral("identify"));
    m_session->click("close_pushButton");
    QVERIFY(!closing.wait(800));
}

void EndingTest::factoryResetWaitsForNoAnswer()
{
    QSignalSpy closing(m_session->plugin.data(), &PlexoPlugin::pluginRequestClose);
    m_session->plugin->setVelmarAsciiTimeout(60000);
    m_session->plugin->queueVelmarAsciiMsg(m_session->device.name(), "{}", true);
    m_session->commandsOf([] {});
    QVERIFY(m_session->plugin->getSettingsChanged());
    m_session->script->forget();
    m_session->script->setSilent(true);
    support::BoxAnswerer ok(QMessageBox::Ok);
    m_session->click("factory_reset_pushButton");
    m_clock.start();
    QVERIFY(!m_session->plugin->getSettingsChanged());
    QVERIFY(!m_session->find<QWidget>("plugin_frame")->isEnabled());
    QVERIFY(m_session->find<QWidget>("DSP")->isHidden());
    QTRY_COMPARE(closing.count(), 1);
    QVERIFY(m_clock.elapsed() >= 990);
    QCOMPARE(m_session->script->sent(),
             QStringList{QStringLiteral("{\"set\":\"/control/defaults\",\"value\":1}")});
}

void EndingTest::rebootSwitchesIdentifyOffAndCloses()
{
    QSignalSpy closing(m_session->plugin.data(), &PlexoPlugin::pluginRequestClose);
    support::BoxAnswerer ok(QMessageBox::Ok);
    const QString reboot = QStringLiteral("{\"set\":\"/control/reboot\", \"value\":true}");
    QCOMPARE(m_session->commandsOf([this] { m_session->click("reboot_pushButton"); }), QStringList(reboot));
    m_session->script->forget();
    QTRY_COMPARE(m_session->script->commands(), QStringList(IdentifyOff));
    QVERIFY(m_clock.elapsed() >= 490);
    m_clock.start();
    QTRY_COMPARE(closing.count(), 1);
    QVERIFY(m_clock.elapsed() >= 450);
}

QTEST_MAIN(EndingTest)
#include "tst_ending.moc"
