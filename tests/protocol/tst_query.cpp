#include "protocol/derived_state_machine.h"
#include "tests/protocol/fake_window.h"

#include <QTest>

namespace {

const char AllGets[] = "/info /status/voice_cue /status/usb /status/bluetooth/state "
                       "/status/bluetooth/list_size /status/bluetooth/list/0 /status/bluetooth/list/1 "
                       "/status/bluetooth/list/2 /status/bluetooth/list/3 /status/bluetooth/list/4 "
                       "/status/bluetooth/list/5 /status/bluetooth/list/6 /status/bluetooth/list/7 "
                       "/status/bluetooth/device /system/usb /system/bluetooth /system/network "
                       "/system/notifications /system/function_gen /system/metering /system/voice_cue "
                       "/preset/dsp/dante_rx /preset/dsp/dante_tx /preset/dsp/usb_playback "
                       "/preset/dsp/usb_record /preset/dsp/bt_sink /preset/dsp/bt_source "
                       "/preset/dsp/voice_cue /preset/dsp/mixer/0 /preset/dsp/mixer/1 /preset/dsp/mixer/2 "
                       "/preset/dsp/mixer/3 /preset/dsp/mixer/4 /preset/dsp/mixer/5 /preset/dsp/mixer/6";

} // namespace

/// The walk through the device's state, counted by accepted replies.
class QueryTest : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_device.reset(new pxDevice);
        m_device->setName(QStringLiteral("KBX"));
        m_window.reset(new FakeWindow);
        m_sent.clear();
        m_finished = 0;
    }

    void asksForEverything()
    {
        start(new DerivedStateMachine(m_window.data()));
        for (int sent : {1, 2, 3, 14, 15, 16, 17, 18, 19, 20, 21, 22, 23, 24, 25, 26, 27, 28, 35}) {
            QTRY_COMPARE(m_sent.size(), sent);
            m_query->timedOut();
            QCOMPARE(m_query->queryState(), int(PluginQueryStateMachine::TimedOut));
            QCOMPARE(m_finished, 0);
            emit m_query->nextState();
        }
        QTRY_COMPARE(m_finished, 1);
        QCOMPARE(m_query->queryState(), int(PluginQueryStateMachine::Idle));
        const QByteArrayList paths = QByteArray(AllGets).split(' ');
        for (int i = 0; i < paths.size(); ++i) {
            QCOMPARE(m_sent.at(i), "KBX {\"get\":\"" + paths.at(i) + "\"}");
            QVERIFY(m_window->getHandlers().value(QString::fromLatin1(paths.at(i))));
        }
        QTRY_VERIFY(!m_query->machine()->isRunning());
        emit m_query->nextState();
        qobject_cast<DerivedStateMachine *>(m_query)->enter_status_usb();
        QCOMPARE(m_sent.last(), QByteArray(R"(KBX {"get":"/status/usb"})"));
        QCOMPARE(m_finished, 1);
    }

    void asksInText()
    {
        start(new PluginQueryStateMachine(m_window.data()));
        QTRY_COMPARE(m_sent, QByteArrayList{"KBX QUERY\r"});
        QCOMPARE(m_query->queryState(), int(PluginQueryStateMachine::Sent));
        emit m_query->nextState();
        QTRY_COMPARE(m_finished, 1);
    }

    void asksNobodyWithoutADevice()
    {
        start(new DerivedStateMachine(m_window.data()));
        QTRY_COMPARE(m_sent.size(), 1);
        m_device.reset();
        qobject_cast<DerivedStateMachine *>(m_query)->enter_status_bluetooth();
        m_query->enter_query();
        m_query->enter_sm_done();
        QCOMPARE(m_sent.size(), 1);
        QCOMPARE(m_finished, 0);
    }

    void readsVersionsOfFileNames()
    {
        DerivedStateMachine machine(nullptr);
        QCOMPARE(machine.versionFromString(QStringLiteral("a_b_c_2.5.json")), 2.5);
        QCOMPARE(machine.versionFromString(QStringLiteral("a_b__2.5")), 2.5);
        QCOMPARE(machine.versionFromString(QStringLiteral("a_b_c_2.5_9.json_1")), 2.5);
        QCOMPARE(machine.versionFromString(QStringLiteral("a_2.5.json")), 0.0);
        QCOMPARE(machine.versionFromString(QStringLiteral("a_b_c.json_2.5")), 0.0);
    }

private:
    void start(PluginQueryStateMachine *query)
    {
        m_query = query;
        connect(query, &PluginQueryStateMachine::sendVelmarAsciiGetRequest, this,
                [this](const QString &name, const QByteArray &bytes) {
                    m_sent.append(name.toLatin1() + ' ' + bytes);
                });
        connect(query, &PluginQueryStateMachine::sm_finished, this, [this] { ++m_finished; });
        query->setDevice(m_device.data());
        query->buildStateMachine();
        query->start();
    }

    QScopedPointer<pxDevice> m_device;
    QScopedPointer<FakeWindow> m_window;
    QPointer<PluginQueryStateMachine> m_query;
    QByteArrayList m_sent;
    int m_finished = 0;
};

QTEST_GUILESS_MAIN(QueryTest)
#include "tst_query.moc"
