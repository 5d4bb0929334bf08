#include "widgets/level_control.h"
#include "widgets/vm_dial.h"
#include "widgets/vm_dsp_gain.h"

#include <QDialog>
#include <QDoubleSpinBox>
#include <QMouseEvent>
#include <QSignalSpy>
#include <QToolTip>
#include <QWheelEvent>
#include <QtTest>
#include <qtestspontaneevent.h>

namespace {

/// The scrolling window around a control: it counts the wheel events that reach it.
class Surroundings : public QDialog
{
public:
    int wheels = 0;

protected:
    void wheelEvent(QWheelEvent *) override { ++wheels; }
};

void turnWheel(QWidget *widget, QPoint angle)
{
    const QPoint middle = widget->rect().center();
    QWheelEvent event(middle, widget->mapToGlobal(middle), {}, angle, Qt::NoButton, Qt::NoModifier,
                      Qt::NoScrollPhase, false);
    QSpontaneKeyEvent::setSpontaneous(&event); // only a wheel event from outside goes on to the parents
    qApp->notify(widget, &event);
}

/// Drags with the left button from the middle of a control, one move at a time, and lets go when it ends.
class Drag
{
public:
    explicit Drag(QWidget *widget, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
        : m_widget(widget)
        , m_modifiers(modifiers)
        , m_at(10, widget->height() / 2)
    {
        QTest::mousePress(widget, Qt::LeftButton, modifiers, m_at);
    }
    ~Drag() { QTest::mouseRelease(m_widget, Qt::LeftButton, m_modifiers, m_at); }

    void up(int pixels)
    {
        m_at.ry() -= pixels;
        QMouseEvent move(QEvent::MouseMove, m_at, m_widget->mapToGlobal(m_at), Qt::NoButton, Qt::LeftButton,
                         m_modifiers);
        QCoreApplication::sendEvent(m_widget, &move);
    }

private:
    QWidget *m_widget;
    Qt::KeyboardModifiers m_modifiers;
    QPoint m_at;
};

} // namespace

/// The user at a fader and at a dial: keys, wheel, drag, double-click, typing.
class TestLevelGestures : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void keys();
    void wheel();
    void wheelWithoutFocusGoesToTheWindow();
    void drag();
    void aLevelSetByProgramInterruptsNoDrag();
    void doubleClick();
    void typing();
    void refusesWhatIsNoLevel();

private:
    QVector<LevelControl *> controls() const { return {m_fader, m_dial}; }
    void set(LevelControl *control, double dB) const
    {
        control == m_fader ? m_fader->setGain(dB) : m_dial->setVal(dB);
    }

    QScopedPointer<Surroundings> m_window;
    VmDspGain *m_fader = nullptr;
    VmDial *m_dial = nullptr;
};

void TestLevelGestures::init()
{
    m_window.reset(new Surroundings);
    m_window->resize(300, 400);
    m_fader = new VmDspGain(m_window.data());
    m_fader->setGeometry(0, 0, 57, 300);
    m_dial = new VmDial(m_window.data());
    m_dial->setGeometry(100, 0, 60, 60);
    m_window->show();
    m_window->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(m_window.data()));
    m_fader->resize(57, 300 + 200 - m_fader->travelRect().height()); // a travel of 200 pixels
    QTRY_COMPARE(m_fader->travelRect().height(), 200);
    m_window->setFocus();
}

void TestLevelGestures::cleanup()
{
    m_window.reset();
}

void TestLevelGestures::keys()
{
    for (LevelControl *control : controls()) {
        QSignalSpy changes(control, &LevelControl::parametersChanged);
        const auto pressed
            = [&](double start, Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
                  set(control, start);
                  QTest::keyClick(control, key, modifiers);
                  return control->level();
              };
        QCOMPARE(pressed(-6.0, Qt::Key_Left, Qt::ShiftModifier), -9.0);
        QCOMPARE(pressed(18.0, Qt::Key_Up, Qt::ShiftModifier), 20.0);
        QCOMPARE(pressed(-97.0, Qt::Key_PageDown), -100.0);
        QCOMPARE(pressed(5.9, Qt::Key_Up), 7.0);
        QCOMPARE(changes.count(), 4);
        QCOMPARE(pressed(20.0, Qt::Key_Up), 20.0);
        QCOMPARE(changes.count(), 4);
    }
}

void TestLevelGestures::wheel()
{
    for (LevelControl *control : controls()) {
        control->setFocus();
        const auto turned = [&](const QVector<QPoint> &angles) {
            set(control, -20.0);
            for (const QPoint &angle : angles)
                turnWheel(control, angle);
            return control->level();
        };
        QCOMPARE(turned({{0, 120}}), -19.0);
        QCOMPARE(turned({{0, 50}, {0, 50}, {0, 50}}), -19.0); // small deltas add up
    }
}

void TestLevelGestures::wheelWithoutFocusGoesToTheWindow()
{
    for (LevelControl *control : controls()) {
        set(control, -20.0);
        turnWheel(control, {0, 120});
        QCOMPARE(control->level(), -20.0);
    }
    QCOMPARE(m_window->wheels, 2);
}

void TestLevelGestures::drag()
{
    const auto dragged = [this](LevelControl *control, double start, int pixels,
                                Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        set(control, start);
        Drag(control, modifiers).up(pixels);
        return control->level();
    };
    QCOMPARE(dragged(m_fader, -33.0, 1), -33.0); // dead band
    QCOMPARE(dragged(m_fader, 0.0, 34), 10.0); // along the scale
    QCOMPARE(dragged(m_fader, 0.0, 101, Qt::ControlModifier), 3.0);
    QCOMPARE(dragged(m_fader, 0.0, 500), 20.0);
    QCOMPARE(dragged(m_dial, -100.0, 241), 20.0); // four dial heights
    QCOMPARE(dragged(m_dial, -6.0, 24), 0.0); // rests at 0 dB
    QCOMPARE(dragged(m_dial, -6.0, 30), 0.0);
    QCOMPARE(dragged(m_dial, -6.0, 34), 1.0);
    QCOMPARE(dragged(m_dial, 6.0, -36), -1.0);
}

void TestLevelGestures::aLevelSetByProgramInterruptsNoDrag()
{
    m_fader->setGain(0.0);
    Drag drag(m_fader);
    drag.up(34);
    m_fader->setGain(-90.0);
    QCOMPARE(m_fader->Gain(), -90.0);
    drag.up(33);
    QCOMPARE(m_fader->Gain(), 20.0);
}

void TestLevelGestures::doubleClick()
{
    const auto clicked = [this](LevelControl *control, double start) {
        set(control, start);
        QTest::mouseDClick(control, Qt::LeftButton, {}, {10, 30});
        return control->level();
    };
    QCOMPARE(clicked(m_fader, -33.0), 0.0);
    QCOMPARE(clicked(m_dial, -33.0), -100.0);
    QCOMPARE(clicked(m_dial, -100.0), 0.0);
}

void TestLevelGestures::typing()
{
    for (LevelControl *typedAt : controls()) {
        for (Qt::Key lastKey : {Qt::Key_Return, Qt::Key_Escape}) {
            set(typedAt, -33.0);
            typedAt->setFocus();
            QTest::keyClick(typedAt, '-');
            auto *entry = typedAt->findChild<QDoubleSpinBox *>(QStringLiteral("numericEntry"));
            QTRY_VERIFY(entry && entry->hasFocus());
            QTest::keyClicks(entry, QStringLiteral("12"));
            QCOMPARE(typedAt->level(), -33.0);
            QTest::keyClick(entry, lastKey);
            QCOMPARE(typedAt->level(), lastKey == Qt::Key_Return ? -12.0 : -33.0);
            QVERIFY2(m_window->isVisible(), "the key reached the dialog");
        }
    }
}

void TestLevelGestures::refusesWhatIsNoLevel()
{
    for (LevelControl *typedAt : controls()) {
        for (const QString &text : {QStringLiteral("55"), QStringLiteral("-7.5"), QStringLiteral("-101")}) {
            set(typedAt, -33.0);
            typedAt->setFocus();
            QTest::keyClick(typedAt, text.at(0).toLatin1());
            auto *entry = typedAt->findChild<QDoubleSpinBox *>(QStringLiteral("numericEntry"));
            QTRY_VERIFY(entry && entry->hasFocus());
            QTest::keyClicks(entry, text.mid(1));
            QCOMPARE(entry->text(), text);
            QTest::keyClick(entry, Qt::Key_Return);
            QCOMPARE(typedAt->level(), -33.0);
            QTRY_VERIFY(QToolTip::text().startsWith(text + QLatin1String(" is not possible")));
        }
    }
}

QTEST_MAIN(TestLevelGestures)
#include "tst_level_gestures.moc"
