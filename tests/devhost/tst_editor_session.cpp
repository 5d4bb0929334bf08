#include "devhost/announcement.h"
#include "devhost/device_transport.h"
#include "devhost/editor_session.h"
#include "devhost/known_device.h"
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
    void endsOnce_data();
    void endsOnce();
    void endsInsideOwnSignal();

private:
    PlexoPlugin *plugin() const { return qobject_cast<PlexoPlugin *>(m_session->editor()->parentWidget()); }
    void start();

    pxDevices m_devices;
    FakeFactory m_factory;
    QScopedPointer<DeviceTransport> m_text;
    QScopedPointer<DeviceTransport> m_aes67;
    QScopedPointer<FakeDevice> m_fake;
    QScopedPointer<KnownDevice> m_device;
    QPointer<EditorSession> m_session;
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
