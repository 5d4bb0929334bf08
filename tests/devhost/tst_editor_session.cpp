#include "devhost/announcement.h"
#include "devhost/device_transport.h"
#include "devhost/editor_session.h"
#include "devhost/known_device.h"
#include "devhost/session_watch.h"
#include "devhost/snapshot_report.h"
#include "host/px_devices.h"
#include "tests/devhost/fake_device.h"
#include "tests/devhost/fake_plugin.h"

#include <QPointer>
#include <QSignalSpy>
#include <QTest>

#include <functional>

using namespace devhost;

using Ending = std::function<void(EditorSession *, PlexoPlugin *)>;
Q_DECLARE_METATYPE(Ending)

class Session : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void carriesTextAndBinaryApart();
    void saysWhatItWaitsFor_data();
    void saysWhatItWaitsFor();
    void reportsSnapshotEntries();
    void endsOnce_data();
    void endsOnce();
    void endsInsideOwnSignal();

private:
    PlexoPlugin *plugin() const { return qobject_cast<PlexoPlugin *>(m_session->editor()->parentWidget()); }
    void start();
    void watchRequests();

    pxDevices m_devices;
    FakeFactory m_factory;
    QScopedPointer<DeviceTransport> m_text;
    QScopedPointer<DeviceTransport> m_aes67;
    QScopedPointer<FakeDevice> m_fake;
    QScopedPointer<KnownDevice> m_device;
    QPointer<EditorSession> m_session;
    QScopedPointer<RequestWatch> m_requests;
    QWidget m_styleSource;
};

void Session::init()
{
    m_text.reset(new DeviceTransport);
    m_aes67.reset(new DeviceTransport);
    m_text->open();
    m_aes67->open();
    m_fake.reset(new FakeDevice);
    m_device.reset(new KnownDevice(QStringLiteral("KBX-0001"), 60000));
    m_device->hear(*parseAnnouncement(m_fake->announcement("KBX-0001", "FAKE")), m_fake->address());
    for (DeviceTransport *transport : {m_text.data(), m_aes67.data()})
        transport->setRoute(m_device->name(), m_fake->address(), m_fake->port());
    m_session
        = new EditorSession({&m_devices, m_text.data(), m_aes67.data(), &m_styleSource, 7}, m_device.data());
}

void Session::watchRequests()
{
    m_requests.reset(new RequestWatch);
    connect(m_text.data(), &DeviceTransport::sent, m_requests.data(),
            [this](const QString &name, const QByteArray &bytes) { m_requests->noteSent(name, bytes, 0); });
    connect(m_text.data(), &DeviceTransport::received, m_requests.data(),
            [this](const QString &name, const QByteArray &bytes) { m_requests->noteReceived(name, bytes); });
}

void Session::cleanup()
{
    delete m_session;
}

void Session::start()
{
    QCOMPARE(m_session->start(&m_factory), QString());
}

void Session::carriesTextAndBinaryApart()
{
    start();
    plugin()->queueVelmarAsciiMsg(m_device->name(), "text", false);
    QTRY_COMPARE(m_fake->heard(), QList<QByteArray>{"text"});
    m_fake->answer("text reply");
    QTRY_COMPARE(plugin()->property("received").toStringList(), QStringList{QStringLiteral("text reply")});
    plugin()->sendVelmarAsciiMsgDirect(m_device->name(), "at once");
    QTRY_COMPARE(m_fake->heard().last(), QByteArray("at once"));
    plugin()->queueVelmarAES67Msg(m_device->name(), "binary");
    QTRY_COMPARE(m_fake->heard().last(), QByteArray("binary"));
    m_fake->answer("binary reply");
    QTRY_COMPARE(plugin()->property("binary").toStringList(), QStringList{QStringLiteral("binary reply")});
    QCOMPARE(plugin()->property("received").toStringList().size(), 1);
}

void Session::saysWhatItWaitsFor_data()
{
    QTest::addColumn<QByteArray>("reply");
    QTest::addColumn<QString>("sentence");
    QTest::addColumn<QString>("hint");
    QTest::newRow("no reply") << QByteArray()
                              << QStringLiteral("answers nothing: the editor waits for it to read /a")
                              << QStringLiteral("1 request waits");
    QTest::newRow("refused") << QByteArray(R"({"cmd":"get","param":"/a","result":"no <b>such</b> thing"})")
                             << QStringLiteral("refused to read /a (no <b>such</b> thing)") << QString();
    QTest::newRow("garbage") << QByteArray("\xff\x00\x01", 3)
                             << QStringLiteral("1 of the device's replies could not be") << QString();
    QTest::newRow("answered") << QByteArray(R"({"cmd":"get","param":"/a","result":"OK","value":1})")
                              << QString() << QString();
}

void Session::saysWhatItWaitsFor()
{
    QFETCH(const QByteArray, reply);
    QFETCH(const QString, sentence);
    watchRequests();
    SessionWatch watch(m_session, m_requests.data(), 1000);
    QSignalSpy stuck(&watch, &SessionWatch::stuck);
    start();
    plugin()->queueVelmarAsciiQueryMsg(m_device->name(), R"({"get":"/a"})");
    QTRY_COMPARE(m_fake->heard().size(), 1);
    if (!reply.isEmpty())
        m_fake->answer(reply);
    if (sentence.isEmpty()) {
        QVERIFY(!stuck.wait(1500)); // half as long again as it is given
    } else {
        QVERIFY(stuck.wait());
        const QString said = stuck.first().first().toString();
        QVERIFY2(said.contains(sentence) && said.contains(m_device->name()), qPrintable(said));
    }
    QTEST(m_session->hint(), "hint");
    QSignalSpy recovered(&watch, &SessionWatch::recovered);
    m_fake->answer(R"({"cmd":"get","param":"/a","result":"OK","value":1})");
    if (sentence.contains(QStringLiteral("/a")))
        QVERIFY(recovered.wait());
}

void Session::reportsSnapshotEntries()
{
    watchRequests();
    start();
    const QByteArray entries[] = {"/sent", "/refused", "/skipped"};
    QByteArray document = "<S>";
    for (const QByteArray &entry : entries)
        document += R"(<E>{"param":")" + entry + R"(","value":1}</E>)";
    auto *report = new SnapshotReport(m_session, m_requests.data(), document + "</S>");
    QSignalSpy finished(report, &SnapshotReport::finished);
    for (int sent = 0; sent < 2; ++sent) {
        plugin()->queueVelmarAsciiMsg(m_device->name(), R"({"set":")" + entries[sent] + R"(","value":1})",
                                      true);
        QTRY_COMPARE(m_fake->heard().size(), sent + 1);
        m_fake->answer(R"({"cmd":"set","param":")" + entries[sent] + R"(","result":")" + (sent ? "no" : "OK")
                       + "\"}");
    }
    QVERIFY(finished.wait());
    QCOMPARE(finished.first().first().toString(),
             QStringLiteral(
                 "KBX-0001 refused 1 of the snapshot's entries: /refused (no). Skipped, because they are no "
                 "settings of this device: /skipped."));
    QVERIFY(finished.first().last().toBool());
}

void Session::endsOnce_data()
{
    QTest::addColumn<Ending>("ending");
    QTest::newRow("the plugin asks") << Ending([](EditorSession *, PlexoPlugin *plugin) {
        emit plugin->pluginRequestClose();
        emit plugin->pluginRequestClose();
    });
    QTest::newRow("the frame is closed")
        << Ending([](EditorSession *session, PlexoPlugin *) { session->editor()->close(); });
    QTest::newRow("the host ends it") << Ending([](EditorSession *session, PlexoPlugin *) {
        session->end();
        session->end();
    });
    QTest::newRow("the plugin dies") << Ending([](EditorSession *, PlexoPlugin *plugin) { delete plugin; });
}

void Session::endsOnce()
{
    QFETCH(const Ending, ending);
    start();
    QSignalSpy ended(m_session, &EditorSession::ended);
    const QPointer<PlexoPlugin> gone(plugin());
    connect(m_session, &EditorSession::ended, this, [this] { QVERIFY(!m_session->editor()); });
    ending(m_session, gone);
    QCOMPARE(ended.count(), 1);
    emit m_text->received(m_device->name(), "too late");
    QTRY_VERIFY(!gone);
    QVERIFY(m_session->snapshot().isEmpty());
    QVERIFY(!m_session->storePreset(1));
}

void Session::endsInsideOwnSignal()
{
    start();
    const QPointer<PlexoPlugin> gone(plugin());
    connect(m_session, &EditorSession::logged, this, [this] { delete m_session; });
    emit gone->logData(QStringLiteral("last words"));
    QVERIFY(!m_session);
    QVERIFY(!gone);
}

QTEST_MAIN(Session)
#include "tst_editor_session.moc"
