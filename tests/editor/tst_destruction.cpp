// The host may destroy the plugin object whenever it likes. Run these under the address sanitizer, too.

#include "tests/editor/live_editor_test.h"
#include "tests/support/box_answerer.h"

#include <QComboBox>
#include <QFileDialog>
#include <QLineEdit>
#include <QPushButton>

class DestructionTest : public LiveEditorTest
{
    Q_OBJECT

public slots:
    void destroy() { session->plugin.reset(); }

private slots:
    void cleanup();
    void inTheMiddleOfTheQuery_data();
    void inTheMiddleOfTheQuery();
    void deviceGoesInTheMiddleOfTheQuery();
    void insideOwnSignal_data();
    void insideOwnSignal();
    void whileADialogIsOpen_data();
    void whileADialogIsOpen();
    void whileAFieldIsLeft();
    void withTheKeyboardOnTheDiagram();
    void withAReloadOfTheMixerPending();

private:
    void openAllBlocks() const;
    void act(const QString &widget);
    static QWidget *window(const char *className);
};

void DestructionTest::cleanup()
{
    session.reset();
    for (const QWidget *left : QApplication::topLevelWidgets())
        QVERIFY2(!left->isVisible(), left->metaObject()->className());
}

void DestructionTest::openAllBlocks() const
{
    for (const char *block :
         {"onBtInGainClicked", "onNetRxGainClicked", "onUsbInGainClicked", "onMatrixMixerClicked",
          "onBtOutGainClicked", "onNetTxGainClicked", "onUsbOutGainClicked"})
        QMetaObject::invokeMethod(session->editor(), block);
    session->find<QWidget>("BtPriorityPairingDialog")->show();
}

QWidget *DestructionTest::window(const char *className)
{
    for (QWidget *candidate : QApplication::topLevelWidgets()) {
        if (candidate->isVisible() && candidate->inherits(className))
            return candidate;
    }
    return nullptr;
}

/// Does what a user does with a widget of the editor or of the receive strips; without one, loads a snapshot.
void DestructionTest::act(const QString &widget)
{
    QByteArray snapshot;
    session->plugin->getSnapshot(&snapshot);
    if (widget.isEmpty())
        session->plugin->applySnapshot(snapshot.replace("/system/network", ""));
    else if (auto *list = session->editor()->findChild<QComboBox *>(widget))
        QTest::keyClick(list, Qt::Key_Down);
    else if (auto *strip = window("NetRxForm")->findChild<QPushButton *>(widget))
        QTest::mouseClick(strip, Qt::LeftButton);
    else
        session->click(widget);
}

void DestructionTest::inTheMiddleOfTheQuery_data()
{
    QTest::addColumn<int>("request");
    for (int request : {1, 19, 35})
        QTest::addRow("request %d", request) << request;
}

void DestructionTest::inTheMiddleOfTheQuery()
{
    QFETCH(int, request);
    session.reset(new support::EditorSession(&factory));
    connect(session->plugin.data(), &PlexoPlugin::sendVelmarAsciiMsg, this, [this, request] {
        if (session->script->sent().size() == request)
            destroy();
    });
    factory.attachDevice(session->plugin.data(), nullptr, &session->device);
    QTRY_VERIFY(!session->plugin && session->script->isIdle());
}

void DestructionTest::deviceGoesInTheMiddleOfTheQuery()
{
    QScopedPointer<pxDevice> device(new pxDevice);
    device->setName(session->device.name());
    session->script->setSilent(true);
    session->script->forget();
    session->plugin->setDevice(device.data());
    QTRY_COMPARE(session->script->sent().size(), 1);
    // The step that this answer leads to is taken from the event loop.
    session->script->deliverGet(session->script->gets().first(), QJsonObject());
    device.reset();
    QCoreApplication::processEvents();
    QCOMPARE(session->script->sent().size(), 1);
}

void DestructionTest::insideOwnSignal_data()
{
    QTest::addColumn<QByteArray>("signal");
    QTest::addColumn<QString>("widget");
    const QByteArray status = SIGNAL(updatePluginStatus(QString, bool));
    QTest::newRow("a check box changed") << status << "usb_priority_checkBox";
    QTest::newRow("a list changed") << status << "usb_audio_mode_comboBox";
    QTest::newRow("a strip changed") << status << "digital_mute_pushButton";
    QTest::newRow("the query ends") << status << "refresh_pushButton";
    QTest::newRow("close") << QByteArray(SIGNAL(pluginRequestClose())) << "close_pushButton";
    QTest::newRow("a snapshot is applied") << status << "";
    QTest::newRow("a section is left out") << QByteArray(SIGNAL(logData(QString))) << "";
    QTest::newRow("a snapshot was applied") << QByteArray(SIGNAL(presetLoadFinished(bool))) << "";
}

void DestructionTest::insideOwnSignal()
{
    QFETCH(QByteArray, signal);
    QFETCH(QString, widget);
    openAllBlocks();
    connect(session->plugin.data(), signal.constData(), this, SLOT(destroy()));
    act(widget);
    QTRY_VERIFY(!session->plugin);
}

void DestructionTest::whileADialogIsOpen_data()
{
    QTest::addColumn<QString>("widget");
    for (const char *widget :
         {"factory_reset_pushButton", "reboot_pushButton", "multicast_metering_apply_pushButton",
          "vc_pair_init_load_pushButton", "vc_pair_init_def_pushButton"})
        QTest::newRow(widget) << widget;
    QTest::newRow("snapshot refused") << "";
}

void DestructionTest::whileADialogIsOpen()
{
    QFETCH(QString, widget);
    session->find<QLineEdit>("multicast_metering_ip_lineEdit")->setText(QStringLiteral("nowhere"));
    openAllBlocks();
    support::onceOpen<QDialog>([this](QDialog *) { destroy(); });
    if (widget.isEmpty())
        session->plugin->applySnapshot("rubbish");
    else
        session->click(widget);
    QVERIFY(!session->plugin);
}

void DestructionTest::whileAFieldIsLeft()
{
    const QPointer<QLineEdit> field = session->find<QLineEdit>("multicast_metering_ip_lineEdit");
    field->setText(QStringLiteral("nowhere"));
    support::onceOpen<QDialog>([this](QDialog *) { destroy(); });
    QTest::keyClick(field, Qt::Key_Return);
    QVERIFY(!session->plugin);
    // The field itself was on the stack: it goes from the event loop.
    QVERIFY(field);
    QTRY_VERIFY(!field);
}

void DestructionTest::withTheKeyboardOnTheDiagram()
{
    QWidget hostPage;
    session->editor()->setParent(&hostPage);
    hostPage.show();
    session->find<QTabWidget>("tabWidget")->setCurrentIndex(3);
    auto *diagram = session->find<QWidget>("DSP")->findChild<QWidget *>();
    QApplication::setActiveWindow(&hostPage);
    session->editor()->show();
    diagram->setFocus(Qt::TabFocusReason);
    QVERIFY(diagram->hasFocus());
    destroy();
}

void DestructionTest::withAReloadOfTheMixerPending()
{
    openAllBlocks();
    const QPointer<QWidget> mixer = window("MatrixMixerForm");
    QTest::mouseClick(mixer->findChild<QPushButton *>(QStringLiteral("reset_pushButton")), Qt::LeftButton);
    qRegisterMetaType<QPair<QPair<int, int>, QPair<int, QVariant>>>(
        "QPair<QPair<int,int>,QPair<int,QVariant> >");
    const char *reload = SIGNAL(DevChanged(QPair<QPair<int, int>, QPair<int, QVariant>>));
    QSignalSpy reloaded(mixer, reload);
    // A host that goes on in an event loop of its own keeps the closed mixer from being deleted meanwhile.
    QTimer::singleShot(0, this, [&] {
        destroy();
        QVERIFY(reloaded.wait());
    });
    QTRY_VERIFY(!mixer);
    QCOMPARE(reloaded.count(), 70);
}

QTEST_MAIN(DestructionTest)
#include "tst_destruction.moc"
