// What is left unfinished when the user goes elsewhere: a field with a bad entry, a box about a device that
// is exchanged meanwhile, a value that has not rested long enough.

#include "tests/editor/live_editor_test.h"
#include "tests/support/box_answerer.h"

#include <QCheckBox>
#include <QFileDialog>
#include <QLineEdit>
#include <QSpinBox>
#include <QTabWidget>

class LeavingTest : public LiveEditorTest
{
    Q_OBJECT

private slots:
    void cleanup() { session.reset(); }
    void fieldIsAskedAboutOnce_data();
    void fieldIsAskedAboutOnce();
    void windowIsLeftWithoutABox_data();
    void windowIsLeftWithoutABox();
    void boxOfOneDeviceLosesNothingOfAnother();
    void answerIsNotForTheNextDevice_data();
    void answerIsNotForTheNextDevice();
    void clickOnIdentifyWithdrawsAClose();
    void toneIsSentWhenTheMixerCloses();
    void slowDeviceIsNotPolledAgain();

private:
    QLineEdit *field() const { return session->find<QLineEdit>("multicast_metering_ip_lineEdit"); }
    void typeNonsense() const;
};

/// Into the metering address, which has the keyboard in an active window.
void LeavingTest::typeNonsense() const
{
    session->find<QTabWidget>("tabWidget")->setCurrentIndex(0);
    QApplication::setActiveWindow(session->editor());
    field()->setFocus();
    QTRY_VERIFY(field()->hasFocus());
    field()->selectAll();
    QTest::keyClicks(field(), QStringLiteral("abc"));
}

void LeavingTest::fieldIsAskedAboutOnce_data()
{
    QTest::addColumn<QString>("by"); // key, or the widget that is clicked
    QTest::newRow("Enter") << "Enter";
    QTest::newRow("Tab to another bad one") << "Tab";
    QTest::newRow("its Apply") << "multicast_metering_apply_pushButton";
    QTest::newRow("another bad field") << "multicast_metering_port_lineEdit";
}

void LeavingTest::fieldIsAskedAboutOnce()
{
    QFETCH(QString, by);
    auto *port = session->find<QLineEdit>("multicast_metering_port_lineEdit");
    if (!by.endsWith(QLatin1String("pushButton")))
        port->setText(QStringLiteral("99999"));
    typeNonsense();
    {
        support::BoxAnswerer ok(QMessageBox::Ok);
        if (by == QLatin1String("Enter"))
            QTest::keyClick(field(), Qt::Key_Return);
        else if (by == QLatin1String("Tab"))
            QTest::keyClick(field(), Qt::Key_Tab);
        else
            QTest::mouseClick(session->find<QWidget>(by), Qt::LeftButton);
        QTRY_COMPARE(ok.seen().size(), 1);
        QCOMPARE(ok.seen().first().text, QStringLiteral("Invalid IP address"));
        QTRY_COMPARE(session->editor()->focusWidget(), field());
    }
    // A second one about it would be in the way of the next box, and have nobody to answer it.
    support::BoxAnswerer next(QMessageBox::Cancel);
    session->click("reboot_pushButton");
    QCOMPARE(next.seen().size(), 1);
}

void LeavingTest::windowIsLeftWithoutABox_data()
{
    QTest::addColumn<QString>("way");
    for (const char *way : {"another window", "hidden", "closed"})
        QTest::newRow(way) << way;
}

void LeavingTest::windowIsLeftWithoutABox()
{
    QFETCH(QString, way);
    typeNonsense();
    support::BoxAnswerer ok(QMessageBox::Ok);
    QWidget elsewhere;
    elsewhere.show();
    if (way == QLatin1String("hidden"))
        session->editor()->hide();
    else if (way == QLatin1String("closed"))
        session->editor()->close();
    QApplication::setActiveWindow(&elsewhere);
    QTRY_VERIFY(!field()->hasFocus() && elsewhere.isActiveWindow());
    QTest::qWait(0);
    QCOMPARE(ok.seen().size(), 0);
    session->editor()->show();
    QApplication::setActiveWindow(session->editor());
    QTRY_COMPARE(ok.seen().size(), 1);
    QCOMPARE(ok.seen().first().text, QStringLiteral("Invalid IP address"));
}

/// The keyboard may be at a fader of another device when a box opens, and back there before the box has gone.
void LeavingTest::boxOfOneDeviceLosesNothingOfAnother()
{
    support::EditorSession other(&factory);
    QVERIFY(other.goLive());
    QMetaObject::invokeMethod(other.editor(), "onNetRxGainClicked");
    const QWidgetList windows = QApplication::topLevelWidgets();
    const auto strips
        = std::find_if(windows.begin(), windows.end(), [](auto *w) { return w->inherits("NetRxForm"); });
    QVERIFY(strips != windows.end());
    auto *fader = (*strips)->findChild<QWidget *>(QStringLiteral("vmdspgain"));
    QVERIFY(fader);
    fader->window()->activateWindow();
    fader->setFocus();
    QTRY_COMPARE(QGuiApplication::focusObject(), fader);
    field()->setText(QStringLiteral("nowhere"));
    support::BoxAnswerer answerer(QMessageBox::Ok);
    answerer.setWhileOpen([fader] { QTest::keyClick(fader, Qt::Key_Up); });
    const QByteArray sent = other.commandsOf([this] {
        QMetaObject::invokeMethod(session->editor(), "on_multicast_metering_apply_pushButton_clicked");
    });
    QCOMPARE(answerer.seen().size(), 1);
    QVERIFY2(sent.contains("/preset/dsp/dante_rx/0/gain"), sent);
}

void LeavingTest::answerIsNotForTheNextDevice_data()
{
    QTest::addColumn<QString>("button");
    for (const char *button : {"multicast_metering_apply_pushButton",
                               "multicast_async_notify_apply_pushButton", "vc_pair_init_load_pushButton"})
        QTest::newRow(button) << button;
}

void LeavingTest::answerIsNotForTheNextDevice()
{
    QFETCH(QString, button);
    for (const char *name : {"multicast_metering_ip_lineEdit", "multicast_async_notify_ip_lineEdit"})
        session->find<QLineEdit>(name)->setText(QStringLiteral("nowhere"));
    pxDevice other;
    other.setName(QStringLiteral("KBX-0002"));
    other.setPresent(true);
    QSignalSpy sent(session->plugin.data(), &PlexoPlugin::sendVelmarAsciiMsg);
    support::onceOpen<QDialog>([&](QDialog *dialog) {
        session->plugin->setDevice(&other);
        if (auto *files = qobject_cast<QFileDialog *>(dialog))
            files->selectFile(QStringLiteral(":/voice_cue/def_pair_init.wav"));
        dialog->accept();
    });
    session->click(button);
    QTRY_VERIFY(sent.count() > 30);
    for (const QVariantList &message : sent)
        QVERIFY2(!message.last().toByteArray().contains("\"/system/metering\",\"value")
                     && !message.last().toByteArray().contains("\"/system/notifications\",\"value")
                     && !message.last().toByteArray().contains("/control/fwdl"),
                 message.last().toByteArray());
    session->close();
}

void LeavingTest::clickOnIdentifyWithdrawsAClose()
{
    session->script->refuse(QStringLiteral("/control/identify"));
    sentByClick(QStringLiteral("close_pushButton"));
    session->script->acceptAll();
    sentByClick(QStringLiteral("identify_checkBox"));
    QVERIFY(!session->find<QTimer>("close_timer")->isActive());
}

void LeavingTest::toneIsSentWhenTheMixerCloses()
{
    QMetaObject::invokeMethod(session->editor(), "onMatrixMixerClicked");
    QWidget *mixer = nullptr;
    for (QWidget *window : QApplication::topLevelWidgets())
        mixer = window->inherits("MatrixMixerForm") ? window : mixer;
    mixer->findChild<QSpinBox *>(QStringLiteral("tone_gen_freq_spinBox"))->setValue(432);
    mixer->findChild<QSpinBox *>(QStringLiteral("tone_gen_level_spinBox"))->setValue(-21);
    QCOMPARE(sentBy([mixer] { mixer->close(); }),
             QByteArray("{\"set\":\"/system/function_gen/frequency\", \"value\":432}\n"
                        "{\"set\":\"/system/function_gen/amplitude\", \"value\":-21}"));
}

void LeavingTest::slowDeviceIsNotPolledAgain()
{
    session->script->forget();
    for (int poll = 0; poll < 5; ++poll)
        QMetaObject::invokeMethod(session->editor(), "onStatusPoll");
    QTRY_VERIFY(session->script->isIdle() && !session->plugin->hasWaitingQueries());
    QCOMPARE(session->script->gets().size(), 13);
    session->script->setSilent(true);
    session->script->forget();
    QMetaObject::invokeMethod(session->editor(), "onStatusPoll");
    const auto answerOne = [this] {
        const QString path = session->script->gets().last();
        session->script->deliverGet(path, session->script->value(path));
    };
    QTRY_COMPARE(session->script->gets(), QStringList(QStringLiteral("/status/voice_cue")));
    answerOne();
    QTRY_COMPARE(session->script->gets().last(), QStringLiteral("/status/usb"));
    // What waits of the poll goes, and what is under way does not count.
    session->click("refresh_pushButton");
    for (int reply = 0; reply < 19; ++reply) {
        const int before = session->script->gets().size();
        answerOne();
        QTRY_COMPARE(session->script->gets().size(), before + 1);
    }
    QCOMPARE(session->script->gets().at(2), QStringLiteral("/info"));
    QVERIFY(!session->find<QWidget>("plugin_frame")->isEnabled());
    answerOne();
    QTRY_VERIFY(session->find<QWidget>("plugin_frame")->isEnabled());
}

QTEST_MAIN(LeavingTest)
#include "tst_leaving.moc"
