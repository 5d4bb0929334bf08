// A session with the simulated device is recorded, and another one led with what replays it: both through the
// host, its real plugin and real sockets.

#include "devhost/host.h"
#include "devhost/known_device.h"
#include "devhost/options.h"
#include "tests/support/loopback.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QProcess>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

using namespace devhost;

namespace {

const QLatin1String Name("KBX-0001");

/// What a user can see of a session: every text, choice and switch of the editor, and all that a snapshot
/// holds.
struct State
{
    QByteArray snapshot;
    QStringList shown;
    QList<QByteArray> levels;
};

QStringList shownBy(const QWidget *editor)
{
    QStringList shown;
    const auto add = [&shown](const QWidget *widget, const QString &value) {
        shown.append(widget->objectName() + QLatin1Char('=') + value
                     + QLatin1Char(widget->isEnabled() ? '+' : '-'));
    };
    for (const auto *field : editor->findChildren<QLineEdit *>())
        add(field, field->text());
    for (const auto *label : editor->findChildren<QLabel *>())
        add(label, label->text());
    for (const auto *choice : editor->findChildren<QComboBox *>())
        add(choice, choice->currentText());
    for (const auto *box : editor->findChildren<QAbstractButton *>())
        add(box, QString::number(box->isChecked()));
    return shown;
}

} // namespace

class RecordedSessionTest : public QObject
{
    Q_OBJECT

private slots:
    void replayLeadsToTheSameState();

private:
    void startDevice(const QStringList &arguments);
    State lead(Host *host);
    void change(Host *host, const QByteArray &set);

    QProcess m_device;
};

void RecordedSessionTest::startDevice(const QStringList &arguments)
{
    if (m_device.state() != QProcess::NotRunning) {
        m_device.terminate();
        QVERIFY(m_device.waitForFinished());
    }
    m_device.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    m_device.start(QStringLiteral(SIMULATOR_FILE),
                   QStringList{QStringLiteral("--exit-with-parent"), QStringLiteral("--address"),
                               QStringLiteral("127.0.0.11")}
                       + arguments);
    QTRY_VERIFY(m_device.canReadLine()); // it listens
}

void RecordedSessionTest::change(Host *host, const QByteArray &set)
{
    const qint64 number = host->sendByHand(Name, set);
    QTRY_COMPARE(host->log()->numbered(number)->outcome, Outcome::Confirmed);
}

/// Opens the editor, waits until it shows all and receives levels, and closes it.
State RecordedSessionTest::lead(Host *host)
{
    State state;
    bool isRead = false;
    const auto wait = connect(host->transport(), &DeviceTransport::received, this,
                              [&isRead](const QString &, const QByteArray &bytes) {
                                  isRead |= bytes.contains("\"/preset/dsp/mixer/6\"");
                              });
    [&] { QCOMPARE(host->sessions()->open(host->finder()->device(Name)), QString()); }();
    EditorSession *session = host->sessions()->session(Name);
    if (!session)
        return state;
    QSignalSpy levels(session->editor(), SIGNAL(meteringLevels(QByteArray)));
    const auto *frame = session->editor()->findChild<QWidget *>(QStringLiteral("plugin_frame"));
    [&] { QTRY_VERIFY(isRead && frame->isEnabled()); }();
    state.snapshot = session->snapshot();
    state.shown = shownBy(session->editor());
    [&] { QTRY_VERIFY(levels.count() >= 5); }();
    for (const QVariantList &datagram : levels)
        state.levels.append(datagram.first().toByteArray());
    disconnect(wait);
    host->sessions()->closeAll();
    return state;
}

void RecordedSessionTest::replayLeadsToTheSameState()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("session.jsonl"));
    Options options;
    options.plugins = QStringList{QStringLiteral(PLUGIN_FILE)};

    startDevice({QStringLiteral("--name"), Name});
    QScopedPointer<Host> host(new Host);
    host->start(options, loopbackInterface());
    QTRY_VERIFY(host->finder()->device(Name));
    // Another state than that of any new device.
    change(host.data(), "{\"set\":\"/system/bluetooth/name\",\"value\":\"B\xc3\xbcro\"}");
    change(host.data(), R"({"set":"/system/usb/mode","value":"speakerphone_ec"})");
    change(host.data(), R"({"set":"/preset/dsp/dante_tx/2/gain","value":-33})");
    QCOMPARE(host->recorder()->start(path), QString());
    const State recorded = lead(host.data());
    host.reset(); // without stop(): what is there is there
    QVERIFY(!recorded.shown.filter(QString::fromUtf8("B\xc3\xbcro")).isEmpty());
    QVERIFY(recorded.levels.size() >= 5);

    startDevice({QStringLiteral("--replay"), path});
    host.reset(new Host);
    host->start(options, loopbackInterface());
    QTRY_VERIFY(host->finder()->device(Name));
    const State replayed = lead(host.data());
    QCOMPARE(replayed.shown, recorded.shown);
    QCOMPARE(replayed.snapshot, recorded.snapshot);
    QVERIFY(recorded.levels.contains(replayed.levels.value(0)));
}

QTEST_MAIN(RecordedSessionTest)
#include "tst_recorded_session.moc"
