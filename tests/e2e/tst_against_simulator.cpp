// The built library against the simulated device: real sockets, real TFTP on port 69, real widgets.

#include "host/plexo_plugin_factory.h"
#include "tests/e2e/live_device.h"
#include "tests/support/box_answerer.h"

#include <QApplication>
#include <QCheckBox>
#include <QFile>
#include <QJsonArray>
#include <QJsonObject>
#include <QPluginLoader>
#include <QPushButton>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QtTest>

using support::LiveDevice;

namespace {

QWidget *topLevel(const QString &title)
{
    for (QWidget *widget : QApplication::topLevelWidgets()) {
        if (widget->isVisible() && widget->windowTitle() == title)
            return widget;
    }
    return nullptr;
}

/// The fader of the block editor's first strip.
QWidget *faderOf(QWidget *editor)
{
    return editor->findChild<QWidget *>(QStringLiteral("vmdspgain"));
}

QObject *meterOf(QWidget *fader)
{
    for (QObject *child : fader->findChildren<QObject *>()) {
        if (child->inherits("VMMeter"))
            return child;
    }
    return nullptr;
}

double level(QObject *meter)
{
    return meter->property("dbValuePort1").toDouble();
}

/// What a snapshot holds, some of the mixer's rows among it.
const char StoredSections[]
    = "/system/network /system/notifications /system/metering /system/function_gen /system/usb "
      "/system/bluetooth /system/voice_cue /preset/dsp/dante_rx /preset/dsp/dante_tx "
      "/preset/dsp/usb_playback /preset/dsp/usb_record /preset/dsp/bt_sink /preset/dsp/bt_source "
      "/preset/dsp/voice_cue /preset/dsp/mixer/0 /preset/dsp/mixer/3 /preset/dsp/mixer/6";

} // namespace

class AgainstSimulatorTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void faderAndMuteAreSeenOnTheMeter();
    void snapshotMovesTheStateToAnotherDevice();
    void defaultCueArrivesWhole();
    void rebootEndsWithoutATimeout();

private:
    PlexoPluginFactory *m_factory = nullptr;
};

void AgainstSimulatorTest::initTestCase()
{
    auto *loader = new QPluginLoader(QStringLiteral(PLUGIN_FILE), this);
    m_factory = qobject_cast<PlexoPluginFactory *>(loader->instance());
    QVERIFY2(m_factory, qPrintable(loader->errorString()));
}

void AgainstSimulatorTest::faderAndMuteAreSeenOnTheMeter()
{
    LiveDevice live(m_factory, 1);
    QVERIFY(live.goLive());
    QMetaObject::invokeMethod(live.editor(), "onNetRxGainClicked");
    QWidget *editor = topLevel(QStringLiteral("Dante Network Rx"));
    QVERIFY(editor);
    QWidget *fader = faderOf(editor);
    QObject *meter = meterOf(fader);
    QTRY_VERIFY(level(meter) > -60 && level(meter) < 20);

    fader->setFocus();
    QTest::keyClick(fader, Qt::Key_Home);
    const QString gain = QStringLiteral("/preset/dsp/dante_rx/0/gain");
    QTRY_VERIFY(live.script->sent().contains(QStringLiteral("{\"set\":\"%1\", \"value\":-100}").arg(gain)));
    QTRY_COMPARE(live.ask(gain), QJsonValue(-100));
    QTRY_VERIFY(level(meter) < -90);

    QTest::keyClick(fader, Qt::Key_End);
    QTRY_VERIFY(level(meter) > -40);
    auto *mute = editor->findChild<QPushButton *>(QStringLiteral("digital_mute_pushButton"));
    QTest::mouseClick(mute, Qt::LeftButton);
    QTRY_COMPARE(live.script->sent().filter(QStringLiteral("/mute")).size(), 1);
    QTRY_VERIFY(level(meter) <= -100);
    QTRY_COMPARE(live.ask(QStringLiteral("/preset/dsp/dante_rx/0/mute")), QJsonValue(true));

    // A new editor shows what the device confirmed.
    QTest::keyClick(editor, Qt::Key_Escape);
    QTRY_VERIFY(!topLevel(QStringLiteral("Dante Network Rx")));
    QMetaObject::invokeMethod(live.editor(), "onNetRxGainClicked");
    editor = topLevel(QStringLiteral("Dante Network Rx"));
    QCOMPARE(faderOf(editor)->property("gain").toDouble(), 20.0);
    QVERIFY(editor->findChild<QPushButton *>(QStringLiteral("digital_mute_pushButton"))->isChecked());
}

void AgainstSimulatorTest::snapshotMovesTheStateToAnotherDevice()
{
    LiveDevice source(m_factory, 1);
    LiveDevice target(m_factory, 2);
    QVERIFY(source.goLive());
    QVERIFY(target.goLive());
    source.plugin->queueVelmarAsciiMsg(
        source.device.name(), "{\"set\":\"/system/bluetooth/name\",\"value\":\"B\xc3\xbcro 3\"}", true);
    source.plugin->queueVelmarAsciiMsg(source.device.name(),
                                       "{\"set\":\"/preset/dsp/dante_tx/2/gain\", \"value\":-7}", true);
    QTRY_COMPARE(source.ask(QStringLiteral("/preset/dsp/dante_tx/2/gain")), QJsonValue(-7));
    source.script->forget();
    QTest::mouseClick(source.find<QPushButton>("refresh_pushButton"), Qt::LeftButton);
    // The editor is live again before the last sections have been read.
    const QTimer *waiting = source.plugin->getVelmarAsciiTimer();
    QTRY_VERIFY(source.script->sent().contains(QStringLiteral("{\"get\":\"/preset/dsp/mixer/6\"}"))
                && !waiting->isActive());

    QByteArray snapshot;
    source.plugin->getSnapshot(&snapshot);
    QVERIFY(target.plugin->checkSnapshot(snapshot));
    const QString gain = QStringLiteral("/preset/dsp/dante_tx/2/gain");
    QVERIFY(source.ask(gain) != target.ask(gain));
    target.script->forget();
    QSignalSpy finished(target.plugin.data(), &PlexoPlugin::presetLoadFinished);
    target.plugin->applySnapshot(snapshot);
    QCOMPARE(finished.value(0), QVariantList{true});
    QVERIFY(!target.find<QWidget>("plugin_frame")->isEnabled());
    QTRY_VERIFY(target.find<QWidget>("plugin_frame")->isEnabled());
    QCOMPARE(target.script->sent()
                 .filter(QStringLiteral("{\"set\":\"/"))
                 .filter(QRegularExpression(QStringLiteral("system|preset")))
                 .size(),
             21);
    for (const QString &section : QString::fromLatin1(StoredSections).split(QLatin1Char(' ')))
        QCOMPARE(target.ask(section), source.ask(section));
}

void AgainstSimulatorTest::defaultCueArrivesWhole()
{
    QTemporaryDir folder;
    const QString kept = folder.filePath(QStringLiteral("kept.wav"));
    LiveDevice live(m_factory, 1, {QStringLiteral("--keep-upload"), kept});
    QVERIFY(live.goLive());
    support::onceOpen<QDialog>([](QDialog *dialog) {
        auto *close = dialog->findChild<QPushButton *>(QStringLiteral("close_pushButton"));
        QTRY_VERIFY(!close->isEnabled());
        QTRY_VERIFY(close->isEnabled());
        QTest::mouseClick(close, Qt::LeftButton);
    });
    QTest::mouseClick(live.find<QPushButton>("vc_connect_failed_def_pushButton"), Qt::LeftButton);
    QFile original(QStringLiteral(CUE_FOLDER "/def_connect_failed.wav"));
    QFile arrived(kept);
    QVERIFY(original.open(QIODevice::ReadOnly));
    QTRY_VERIFY(arrived.exists());
    QVERIFY(arrived.open(QIODevice::ReadOnly));
    QCOMPARE(arrived.readAll(), original.readAll());
    const QString command = QStringLiteral("{\"set\":\"/control/fwdl\",\"value\":{\"target\":\"VC_BT_FAIL\","
                                           "\"uri\":\"tftp://127.0.0.2:69/def_connect_failed.wav\"}}");
    QVERIFY(live.script->sent().contains(command));
    QTRY_COMPARE(live.script->sent().filter(QStringLiteral("req_metering")).size(), 2);
    QVERIFY(live.find<QCheckBox>("vc_connect_failed_en_checkBox")->isEnabled());
}

void AgainstSimulatorTest::rebootEndsWithoutATimeout()
{
    LiveDevice live(m_factory, 1);
    QVERIFY(live.goLive());
    support::BoxAnswerer proceed(QMessageBox::Ok);
    QSignalSpy overdue(live.plugin.data(), &PlexoPlugin::sendVelmarAsciiMsgTimeout);
    QSignalSpy closing(live.plugin.data(), &PlexoPlugin::pluginRequestClose);
    QTest::mouseClick(live.find<QPushButton>("reboot_pushButton"), Qt::LeftButton);
    QTRY_COMPARE(closing.count(), 1);
    QCOMPARE(overdue.count(), 0);
    QCOMPARE(proceed.seen().size(), 1);
}

QTEST_MAIN(AgainstSimulatorTest)
#include "tst_against_simulator.moc"
