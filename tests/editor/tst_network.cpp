// Addresses: what is checked, what is sent all the same, and the socket that follows the metering address.

#include "dsp/metering_socket.h"
#include "plugin/velmar_sample_plugin_factory.h"
#include "tests/support/box_answerer.h"
#include "tests/support/editor_session.h"

#include <QCheckBox>
#include <QJsonObject>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QUdpSocket>
#include <QtTest>

class NetworkTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanupTestCase() { m_session.reset(); }
    void fieldsAreChecked_data();
    void fieldsAreChecked();
    void leavingAFieldChecksIt();
    void applyWarnsAndSends_data();
    void applyWarnsAndSends();
    void staticAddressEnablesItsFields();
    void typedTextGivesWayToTheDevice();
    void socketFollowsTheConfirmedAddress();
    void levelsComeFromTheDeviceOnly_data();
    void levelsComeFromTheDeviceOnly();

private:
    QLineEdit *field(const char *name) const { return m_session->find<QLineEdit>(name); }
    MeteringSocket *socket() const { return m_session->editor()->findChild<MeteringSocket *>(); }

    VelmarSamplePluginFactory m_factory;
    QScopedPointer<support::EditorSession> m_session;
};

void NetworkTest::init()
{
    if (!m_session) {
        m_session.reset(new support::EditorSession(&m_factory));
        QVERIFY(m_session->goLive());
    }
    m_session->script->acceptAll();
    for (const char *path : {"/system/network", "/system/notifications", "/system/metering"})
        m_session->deviceReports(path, m_session->script->value(QLatin1String(path)));
    m_session->commandsOf([] {});
}

void NetworkTest::fieldsAreChecked_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("warning");
    const auto address = [](const char *text, bool accepted) {
        QTest::newRow(text) << "multicast_async_notify_ip_lineEdit" << text
                            << (accepted ? "" : "Invalid IP address");
    };
    const auto port = [](const char *text, bool accepted) {
        QTest::newRow(text) << "multicast_async_notify_port_lineEdit" << text
                            << (accepted ? "" : "Invalid port number");
    };
    address("192.168.1", false);
    address("0.1.2.3", false);
    address("a.1.2.3", false);
    address("...", false);
    address("10.0.0.300", true);
    address("10.a.b.c", true);
    address("10.0.0.1.5", true);
    port("0", false);
    port("65536", false);
    port("-1", false);
    port("abc", false);
    port("1", true);
    port("65535", true);
}

void NetworkTest::fieldsAreChecked()
{
    QFETCH(QString, name);
    QFETCH(QString, text);
    QFETCH(QString, warning);
    support::BoxAnswerer ok(QMessageBox::Ok);
    auto *edit = field(name.toLatin1().constData());
    edit->selectAll();
    QTest::keyClicks(edit, text);
    QCOMPARE(m_session->commandsOf([&] { QTest::keyClick(edit, Qt::Key_Return); }), QStringList());
    QCOMPARE(ok.seen().size(), warning.isEmpty() ? 0 : 1);
    QCOMPARE(edit->text(), text);
    if (warning.isEmpty())
        return;
    QCOMPARE(ok.seen().first().title, QStringLiteral("Invalid entry"));
    QCOMPARE(ok.seen().first().text, warning);
    QCOMPARE(ok.seen().first().buttons, QStringList(QStringLiteral("OK")));
    QCOMPARE(m_session->editor()->focusWidget(), edit);
    QVERIFY(!edit->signalsBlocked());
}

void NetworkTest::leavingAFieldChecksIt()
{
    support::BoxAnswerer ok(QMessageBox::Ok);
    QApplication::setActiveWindow(m_session->editor());
    QVERIFY(QTest::qWaitForWindowActive(m_session->editor()));
    auto *address = field("multicast_metering_ip_lineEdit");
    auto *port = field("multicast_metering_port_lineEdit");
    address->setFocus();
    address->setText(QStringLiteral("nowhere"));
    port->setFocus();
    QTRY_COMPARE(m_session->editor()->focusWidget(), address);
    QCOMPARE(ok.seen().size(), 1);
}

void NetworkTest::applyWarnsAndSends_data()
{
    QTest::addColumn<QString>("address");
    QTest::addColumn<QString>("port");
    QTest::addColumn<QStringList>("warnings");
    QTest::addColumn<QString>("value");
    QTest::newRow("good") << "239.9.9.9"
                          << "7000" << QStringList() << R"("ip":"239.9.9.9","port":7000})";
    QTest::newRow("bad") << "239.9"
                         << "abc"
                         << QStringList(
                                {QStringLiteral("Invalid IP address"), QStringLiteral("Invalid port number")})
                         << R"("ip":"239.9","port":0})";
}

void NetworkTest::applyWarnsAndSends()
{
    QFETCH(QString, address);
    QFETCH(QString, port);
    QFETCH(QString, value);
    const QStringList groups[]
        = {{QStringLiteral("multicast_metering"), QStringLiteral("/system/metering"), QStringLiteral("{")},
           {QStringLiteral("multicast_async_notify"), QStringLiteral("/system/notifications"),
            QStringLiteral("{\"enable\":false,")}};
    m_session->script->refuse(QStringLiteral("/system"));
    for (const QStringList &group : groups) {
        support::BoxAnswerer ok(QMessageBox::Ok);
        field((group.at(0) + QLatin1String("_ip_lineEdit")).toLatin1().constData())->setText(address);
        field((group.at(0) + QLatin1String("_port_lineEdit")).toLatin1().constData())->setText(port);
        const QStringList sent = m_session->commandsOf([&] {
            m_session
                ->find<QPushButton>((group.at(0) + QLatin1String("_apply_pushButton")).toLatin1().constData())
                ->click();
        });
        QCOMPARE(sent,
                 QStringList(
                     QStringLiteral("{\"set\":\"%1\",\"value\":%2%3}").arg(group.at(1), group.at(2), value)));
        QStringList warnings;
        for (const support::SeenBox &box : ok.seen())
            warnings.append(box.text);
        QTEST(warnings, "warnings");
    }
}

void NetworkTest::staticAddressEnablesItsFields()
{
    const auto areEnabled = [this] {
        int enabled = 0;
        for (const char *name : {"dev_ip_lineEdit", "dev_netmask_lineEdit", "dev_gateway_lineEdit",
                                 "dev_network_apply_pushButton"})
            enabled += m_session->find<QWidget>(name)->isEnabled();
        return enabled;
    };
    auto *box = m_session->find<QCheckBox>("dev_static_ip_checkBox");
    QCOMPARE(areEnabled(), 0);
    QCOMPARE(field("dev_gateway_lineEdit")->text(), QStringLiteral("10.0.0.1"));
    QCOMPARE(m_session->commandsOf([&] { box->click(); }), QStringList());
    QCOMPARE(areEnabled(), 4);
    const auto apply = [this] { m_session->find<QPushButton>("dev_network_apply_pushButton")->click(); };
    QCOMPARE(m_session->commandsOf(apply),
             QStringList(QStringLiteral("{\"set\":\"/system/network\",\"value\":{\"ip_mode\":\"static\","
                                        "\"static_gateway\":\"10.0.0.1\",\"static_ip\":\"10.0.0.2\","
                                        "\"static_netmask\":\"255.0.0.0\"}}")));
    QVERIFY(box->isChecked());
    QVERIFY(m_session->plugin->getSettingsChanged());
    box->click();
    QCOMPARE(areEnabled(), 0);
    m_session->deviceReports("/info", QJsonObject());
    QVERIFY(box->isChecked());
    QCOMPARE(areEnabled(), 4);
}

void NetworkTest::typedTextGivesWayToTheDevice()
{
    field("multicast_async_notify_ip_lineEdit")->setText(QStringLiteral("1.2.3.4"));
    field("multicast_metering_port_lineEdit")->setText(QStringLiteral("1"));
    m_session->deviceReports("/info", QJsonObject());
    QCOMPARE(field("multicast_async_notify_ip_lineEdit")->text(), QStringLiteral("239.1.1.1"));
    QCOMPARE(field("multicast_metering_port_lineEdit")->text(), QStringLiteral("5100"));
}

void NetworkTest::socketFollowsTheConfirmedAddress()
{
    const QPointer<MeteringSocket> first = socket();
    QVERIFY(first);
    QCOMPARE(first->group(), QStringLiteral("239.255.1.1"));
    QCOMPARE(int(first->localPort()), 5100);
    m_session->deviceReports("/info", QJsonObject());
    QCOMPARE(socket(), first.data());
    field("multicast_metering_ip_lineEdit")->setText(QStringLiteral("239.255.1.2"));
    m_session->script->refuse(QStringLiteral("/system/metering"));
    m_session->commandsOf([this] { m_session->click("multicast_metering_apply_pushButton"); });
    QCOMPARE(socket(), first.data());
    m_session->script->acceptAll();
    m_session->commandsOf([this] { m_session->click("multicast_metering_apply_pushButton"); });
    QTRY_VERIFY(!first);
    QCOMPARE(socket()->group(), QStringLiteral("239.255.1.2"));
    QVERIFY(socket()->state() == QAbstractSocket::BoundState);
}

void NetworkTest::levelsComeFromTheDeviceOnly_data()
{
    QTest::addColumn<QString>("device");
    QTest::addColumn<QByteArray>("datagram");
    QTest::addColumn<bool>("taken");
    QTest::newRow("levels") << "127.0.0.1" << QByteArray("\x81\x02\x03\xf6", 4) << true;
    QTest::newRow("mark alone") << "127.0.0.1" << QByteArray("\x81") << true;
    QTest::newRow("other mark") << "127.0.0.1" << QByteArray("\x80\x02\x03\xf6", 4) << false;
    QTest::newRow("empty") << "127.0.0.1" << QByteArray() << false;
    QTest::newRow("other sender") << "127.0.0.9" << QByteArray("\x81\x02\x03\xf6", 4) << false;
}

void NetworkTest::levelsComeFromTheDeviceOnly()
{
    QFETCH(QString, device);
    QFETCH(QByteArray, datagram);
    QFETCH(bool, taken);
    QSignalSpy levels(m_session->editor(), SIGNAL(meteringLevels(QByteArray)));
    QUdpSocket sender;
    const QByteArray last("\x81last");
    m_session->device.setIpAddress(QHostAddress(device));
    QSignalSpy arrived(socket(), &QUdpSocket::readyRead);
    sender.writeDatagram(datagram, QHostAddress::LocalHost, socket()->localPort());
    QVERIFY(arrived.wait());
    m_session->device.setIpAddress(QHostAddress(QHostAddress::LocalHost));
    sender.writeDatagram(last, QHostAddress::LocalHost, socket()->localPort());
    QTRY_VERIFY(!levels.isEmpty() && levels.last().first().toByteArray() == last);
    QCOMPARE(levels.count(), taken ? 2 : 1);
    if (taken)
        QCOMPARE(levels.first().first().toByteArray(), datagram);
}

QTEST_MAIN(NetworkTest)
#include "tst_network.moc"
