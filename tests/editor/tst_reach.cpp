// The editor by keyboard, by wheel and for a screen reader.

#include "tests/editor/live_editor_test.h"

#include <QAccessible>
#include <QComboBox>
#include <QScreen>
#include <QTabWidget>

class ReachTest : public LiveEditorTest
{
    Q_OBJECT

private slots:
    void wheelPassesOver();
    void keysWorkEverywhere();
    void largeTextIsScrolledTo();
    void everyControlIsNamedAndReached_data();
    void everyControlIsNamedAndReached();
};

void ReachTest::wheelPassesOver()
{
    auto *list = session->find<QComboBox>("bt_connection_mode_comboBox");
    session->find<QTabWidget>("tabWidget")->setCurrentIndex(1);
    QApplication::setActiveWindow(session->editor());
    for (bool focused : {false, true}) {
        session->deviceReports(QStringLiteral("/system/bluetooth"),
                               R"({"enable":true,"connection_mode":"basic"})");
        focused ? list->setFocus() : list->clearFocus();
        QWheelEvent notch({5, 5}, list->mapToGlobal(QPoint(5, 5)), {}, {0, -120}, Qt::NoButton,
                          Qt::NoModifier, Qt::NoScrollPhase, false);
        QCOMPARE(sentBy([&] { QApplication::sendEvent(list, &notch); }).isEmpty(), !focused);
        QCOMPARE(list->currentText() == QLatin1String("Manual"), !focused);
    }
}

void ReachTest::keysWorkEverywhere()
{
    auto *pages = session->find<QTabWidget>("tabWidget");
    pages->setCurrentIndex(0);
    auto *banner = session->find<QWidget>("identify_checkBox");
    QTest::keyClick(banner, Qt::Key_Backtab, Qt::ControlModifier | Qt::ShiftModifier);
    QCOMPARE(pages->currentIndex(), 3);
    QTest::keyClick(banner, Qt::Key_Tab, Qt::ControlModifier);
    QCOMPARE(pages->currentIndex(), 0);
    QTest::keyClick(session->find<QWidget>("multicast_metering_port_lineEdit"), Qt::Key_Tab,
                    Qt::ControlModifier);
    QCOMPARE(pages->currentIndex(), 1);
    auto *closing = session->find<QTimer>("close_timer");
    QTest::keyClick(banner, Qt::Key_W, Qt::ControlModifier);
    QTRY_VERIFY(closing->isActive());
    closing->stop();
}

void ReachTest::largeTextIsScrolledTo()
{
    session->editor()->setStyleSheet(QStringLiteral("* { font-size: 30pt; }"));
    session->find<QTabWidget>("tabWidget")->setCurrentIndex(2);
    auto *last = session->find<QWidget>("vc_connect_failed_def_pushButton");
    const QSize screen = session->editor()->screen()->availableSize();
    QTRY_VERIFY(last->mapTo(session->editor(), last->rect().bottomRight()).x() > screen.width());
    session->editor()->resize(screen);
    QCOMPARE(session->editor()->size(), screen);
    last->setFocus(Qt::TabFocusReason);
    session->find<QWidget>("vc_connect_failed_play_pushButton")->setFocus(Qt::TabFocusReason);
    QTest::keyClick(session->editor()->focusWidget(), Qt::Key_Tab);
    QVERIFY(!last->visibleRegion().isEmpty());
}

void ReachTest::everyControlIsNamedAndReached_data()
{
    QTest::addColumn<int>("page"); // of the editor; none for the dialog
    for (int page : {0, 1, 2, 3, -1})
        QTest::addRow("page %d", page) << page;
}

void ReachTest::everyControlIsNamedAndReached()
{
    QFETCH(int, page);
    QWidget *window = page < 0 ? session->find<QWidget>("BtPriorityPairingDialog") : session->editor();
    window->show();
    QApplication::setActiveWindow(window);
    session->find<QTabWidget>("tabWidget")->setCurrentIndex(page);
    QSet<const QWidget *> reached;
    for (int press = 0; press < 60; ++press) {
        QTest::keyClick(window->focusWidget() ? window->focusWidget() : window, Qt::Key_Tab);
        reached.insert(window->focusWidget());
    }
    for (QWidget *control : window->findChildren<QWidget *>()) {
        const bool isPart
            = control->window() != window->window() || control->objectName().startsWith(QLatin1String("qt_"));
        if (isPart || control->focusProxy() || !control->isVisible()
            || !(control->focusPolicy() & Qt::TabFocus))
            continue;
        const QString name
            = QLatin1String(control->metaObject()->className()) + QLatin1Char(' ') + control->objectName();
        const QAccessibleInterface *told = QAccessible::queryAccessibleInterface(control);
        QVERIFY2(told && !told->text(QAccessible::Name).isEmpty(), qPrintable(name));
        QVERIFY2(reached.contains(control) || !control->isEnabled(), qPrintable(name));
    }
    session->find<QWidget>("BtPriorityPairingDialog")->hide();
}

QTEST_MAIN(ReachTest)
#include "tst_reach.moc"
