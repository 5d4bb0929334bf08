#include "widgets/level_control.h"
#include "widgets/vm_dial.h"
#include "widgets/vm_dsp_gain.h"

#include <QAccessible>
#include <QDialog>
#include <QDoubleSpinBox>
#include <QMouseEvent>
#include <QSet>
#include <QSignalSpy>
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

void turnWheel(QWidget *widget, QPoint angle, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
{
    const QPoint middle = widget->rect().center();
    QWheelEvent event(middle, widget->mapToGlobal(middle), {}, angle, Qt::NoButton, modifiers,
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

/// The hand on a fader and on a dial: keys, wheel, drag, double-click, typing.
class TestLevelGestures : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void keys_data();
    void keys();
    void wheel_data();
    void wheel();
    void wheelWithoutFocusGoesToTheWindow();
    void wheelOverTheEntryNeedsFocusToo();
    void drag_data();
    void drag();
    void dragAnnouncesEveryWholeDecibelOnce();
    void fineDragReachesEveryWholeDecibel();
    void dragGoesOnFromTheHandAfterALevelSetByProgram();
    void doubleClick_data();
    void doubleClick();
    void typing_data();
    void typing();
    void aLevelSetByProgramLeavesTypingAlone();
    void screenReader_data();
    void screenReader();

private:
    LevelControl *control(const QString &kind) const;
    void set(LevelControl *control, double dB) const;
    QDoubleSpinBox *entryOf(LevelControl *control) const;

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
    m_dial->setGeometry(100, 0, 60, 60); // one pixel of a drag is one dB
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

LevelControl *TestLevelGestures::control(const QString &kind) const
{
    return kind == QLatin1String("fader") ? static_cast<LevelControl *>(m_fader) : m_dial;
}

void TestLevelGestures::set(LevelControl *control, double dB) const
{
    control == m_fader ? m_fader->setGain(dB) : m_dial->setVal(dB);
}

QDoubleSpinBox *TestLevelGestures::entryOf(LevelControl *control) const
{
    return control->findChild<QDoubleSpinBox *>(QStringLiteral("numericEntry"));
}

void TestLevelGestures::keys_data()
{
    QTest::addColumn<double>("start");
    QTest::addColumn<int>("key");
    QTest::addColumn<Qt::KeyboardModifiers>("modifiers");
    QTest::addColumn<double>("level");
    const Qt::KeyboardModifiers none = Qt::NoModifier;
    const Qt::KeyboardModifiers shift = Qt::ShiftModifier;
    QTest::newRow("up") << -6.0 << int(Qt::Key_Up) << none << -5.0;
    QTest::newRow("right") << -6.0 << int(Qt::Key_Right) << none << -5.0;
    QTest::newRow("down") << -6.0 << int(Qt::Key_Down) << none << -7.0;
    QTest::newRow("left, three") << -6.0 << int(Qt::Key_Left) << shift << -9.0;
    QTest::newRow("up, three, to the end") << 18.0 << int(Qt::Key_Up) << shift << 20.0;
    QTest::newRow("page up") << -6.0 << int(Qt::Key_PageUp) << none << 0.0;
    QTest::newRow("page down to the end") << -97.0 << int(Qt::Key_PageDown) << none << -100.0;
    QTest::newRow("home") << -6.0 << int(Qt::Key_Home) << none << -100.0;
    QTest::newRow("end") << -6.0 << int(Qt::Key_End) << none << 20.0;
    QTest::newRow("at the end already") << 20.0 << int(Qt::Key_Up) << none << 20.0;
    QTest::newRow("from a fraction") << 5.9 << int(Qt::Key_Up) << none << 7.0;
    QTest::newRow("a shortcut") << -6.0 << int(Qt::Key_Up) << Qt::KeyboardModifiers(Qt::AltModifier) << -6.0;
    QTest::newRow("another key") << -6.0 << int(Qt::Key_F5) << none << -6.0;
}

void TestLevelGestures::keys()
{
    QFETCH(double, start);
    QFETCH(int, key);
    QFETCH(Qt::KeyboardModifiers, modifiers);
    QFETCH(double, level);
    for (LevelControl *control :
         {static_cast<LevelControl *>(m_fader), static_cast<LevelControl *>(m_dial)}) {
        set(control, start);
        QSignalSpy changes(control, &LevelControl::parametersChanged);
        QTest::keyClick(control, Qt::Key(key), modifiers);
        QCOMPARE(control->level(), level);
        QCOMPARE(changes.count(), start == level ? 0 : 1);
    }
}

void TestLevelGestures::wheel_data()
{
    QTest::addColumn<QVector<QPoint>>("angles");
    QTest::addColumn<Qt::KeyboardModifiers>("modifiers");
    QTest::addColumn<double>("level");
    using Angles = QVector<QPoint>;
    const Qt::KeyboardModifiers none = Qt::NoModifier;
    const Qt::KeyboardModifiers shift = Qt::ShiftModifier;
    QTest::newRow("a notch up") << Angles{{0, 120}} << none << -19.0;
    QTest::newRow("two notches down") << Angles{{0, -240}} << none << -22.0;
    QTest::newRow("three at a time") << Angles{{0, 120}} << shift << -17.0;
    QTest::newRow("Shift turns it sideways") << Angles{{120, 0}} << shift << -17.0;
    QTest::newRow("small deltas add up") << Angles{{0, 50}, {0, 50}, {0, 50}} << none << -19.0;
    QTest::newRow("turning back forgets the rest") << Angles{{0, 100}, {0, -120}} << none << -21.0;
    QTest::newRow("sideways is scrolling") << Angles{{120, 0}} << none << -20.0;
}

void TestLevelGestures::wheel()
{
    QFETCH(QVector<QPoint>, angles);
    QFETCH(Qt::KeyboardModifiers, modifiers);
    for (LevelControl *control :
         {static_cast<LevelControl *>(m_fader), static_cast<LevelControl *>(m_dial)}) {
        set(control, -20.0);
        control->setFocus();
        for (const QPoint &angle : qAsConst(angles))
            turnWheel(control, angle, modifiers);
        QTEST(control->level(), "level");
    }
}

void TestLevelGestures::wheelWithoutFocusGoesToTheWindow()
{
    for (LevelControl *control :
         {static_cast<LevelControl *>(m_fader), static_cast<LevelControl *>(m_dial)}) {
        m_window->wheels = 0;
        set(control, -20.0);
        turnWheel(control, {0, 120});
        QCOMPARE(control->level(), -20.0);
        QCOMPARE(m_window->wheels, 1);
        control->setFocus();
        turnWheel(control, {0, 120});
        QCOMPARE(control->level(), -19.0);
        QCOMPARE(m_window->wheels, 1);
    }
}

void TestLevelGestures::wheelOverTheEntryNeedsFocusToo()
{
    turnWheel(m_fader->numericEntry(), {0, 120});
    QCOMPARE(m_fader->Gain(), 0.0);
    QCOMPARE(m_window->wheels, 1);
    m_fader->numericEntry()->setFocus();
    turnWheel(m_fader->numericEntry(), {0, 120});
    QCOMPARE(m_fader->Gain(), 1.0);
    QCOMPARE(m_window->wheels, 1);
}

void TestLevelGestures::drag_data()
{
    QTest::addColumn<QString>("kind");
    QTest::addColumn<double>("start");
    QTest::addColumn<int>("pixels");
    QTest::addColumn<Qt::KeyboardModifiers>("modifiers");
    QTest::addColumn<double>("level");
    const Qt::KeyboardModifiers none = Qt::NoModifier;
    const Qt::KeyboardModifiers ctrl = Qt::ControlModifier;
    QTest::newRow("fader, press only") << "fader" << -33.0 << 0 << none << -33.0;
    QTest::newRow("fader, dead band") << "fader" << -33.0 << 1 << none << -33.0;
    QTest::newRow("fader, up along the scale") << "fader" << 0.0 << 34 << none << 10.0;
    QTest::newRow("fader, down along the scale") << "fader" << 0.0 << -65 << none << -20.0;
    QTest::newRow("fader, finely") << "fader" << 0.0 << 101 << ctrl << 3.0;
    QTest::newRow("fader, past the end") << "fader" << 0.0 << 500 << none << 20.0;
    QTest::newRow("dial, dead band") << "dial" << -33.0 << -1 << none << -33.0;
    QTest::newRow("dial, up") << "dial" << -60.0 << 41 << none << -20.0;
    QTest::newRow("dial, finely") << "dial" << -60.0 << 41 << ctrl << -56.0;
    QTest::newRow("dial, two heights") << "dial" << -100.0 << 121 << none << 20.0;
}

void TestLevelGestures::drag()
{
    QFETCH(QString, kind);
    QFETCH(double, start);
    QFETCH(int, pixels);
    QFETCH(Qt::KeyboardModifiers, modifiers);
    LevelControl *dragged = control(kind);
    set(dragged, start);
    Drag(dragged, modifiers).up(pixels);
    QTEST(dragged->level(), "level");
}

void TestLevelGestures::dragAnnouncesEveryWholeDecibelOnce()
{
    m_dial->setVal(-60.0);
    QVector<double> announced;
    connect(m_dial, &VmDial::parametersChanged, this, [&] { announced.append(m_dial->Val()); });
    Drag drag(m_dial);
    for (int move = 0; move < 4; ++move)
        drag.up(1);
    drag.up(3);
    QCOMPARE(announced, (QVector<double>{-59.0, -58.0, -57.0, -54.0}));
}

void TestLevelGestures::fineDragReachesEveryWholeDecibel()
{
    m_fader->setGain(-100.0);
    QSet<int> reached{-100};
    connect(m_fader, &VmDspGain::parametersChanged, this, [&] { reached.insert(int(m_fader->Gain())); });
    Drag drag(m_fader, Qt::ControlModifier);
    for (int move = 0; move < 2010; ++move)
        drag.up(1);
    QCOMPARE(reached.size(), 121);
}

void TestLevelGestures::dragGoesOnFromTheHandAfterALevelSetByProgram()
{
    m_dial->setVal(-60.0);
    QSignalSpy changes(m_dial, &VmDial::parametersChanged);
    Drag drag(m_dial);
    drag.up(11);
    m_dial->setVal(-90.0);
    QCOMPARE(m_dial->Val(), -90.0);
    QCOMPARE(changes.count(), 1);
    drag.up(1);
    QCOMPARE(m_dial->Val(), -49.0);
    m_dial->setEnabled(false);
    m_dial->setEnabled(true);
    drag.up(20);
    QCOMPARE(m_dial->Val(), -49.0); // being disabled ended the drag
}

void TestLevelGestures::doubleClick_data()
{
    QTest::addColumn<QString>("kind");
    QTest::addColumn<double>("start");
    QTest::addColumn<double>("level");
    QTest::newRow("fader") << "fader" << -33.0 << 0.0;
    QTest::newRow("dial in use") << "dial" << -33.0 << -100.0;
    QTest::newRow("dial not in use") << "dial" << -100.0 << 0.0;
}

void TestLevelGestures::doubleClick()
{
    QFETCH(QString, kind);
    QFETCH(double, start);
    LevelControl *clicked = control(kind);
    set(clicked, start);
    QSignalSpy changes(clicked, &LevelControl::parametersChanged);
    QTest::mouseDClick(clicked, Qt::RightButton, {}, {10, 30});
    QCOMPARE(changes.count(), 0);
    QTest::mouseDClick(clicked, Qt::LeftButton, {}, {10, 30});
    QTEST(clicked->level(), "level");
    QCOMPARE(changes.count(), 1);
}

void TestLevelGestures::typing_data()
{
    QTest::addColumn<QString>("kind");
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("lastKey");
    QTest::addColumn<double>("level");
    for (const char *kind : {"fader", "dial"}) {
        const auto row = [kind](const char *what) -> QTestData & {
            return QTest::addRow("%s, %s", kind, what) << QString::fromLatin1(kind);
        };
        row("a level") << "-12" << int(Qt::Key_Return) << -12.0;
        row("above zero") << "7" << int(Qt::Key_Enter) << 7.0;
        row("beyond the range") << "-250" << int(Qt::Key_Return) << -25.0;
        row("given up") << "-12" << int(Qt::Key_Escape) << -33.0;
        row("left by Tab") << "-12" << int(Qt::Key_Tab) << -12.0;
        row("a step from what is typed") << "-12" << int(Qt::Key_Up) << -11.0;
    }
}

void TestLevelGestures::typing()
{
    QFETCH(QString, kind);
    QFETCH(QString, text);
    QFETCH(int, lastKey);
    LevelControl *typedAt = control(kind);
    set(typedAt, -33.0);
    typedAt->setFocus();
    QTest::keyClick(typedAt, text.at(0).toLatin1());
    QDoubleSpinBox *entry = entryOf(typedAt);
    QTRY_VERIFY(entry && entry->hasFocus());
    QTest::keyClicks(entry, text.mid(1));
    QCOMPARE(typedAt->level(), -33.0);
    QTest::keyClick(entry, Qt::Key(lastKey));
    QTEST(typedAt->level(), "level");
    QVERIFY(m_window->isVisible()); // neither Enter nor Escape reached the dialog
    if (lastKey != Qt::Key_Tab && lastKey != Qt::Key_Up)
        QVERIFY(typedAt->hasFocus());
    if (lastKey != Qt::Key_Up)
        QCOMPARE(entry->isVisible(), typedAt == m_fader);
}

void TestLevelGestures::aLevelSetByProgramLeavesTypingAlone()
{
    m_fader->setFocus();
    QTest::keyClick(m_fader, '-');
    QTest::keyClicks(m_fader->numericEntry(), QStringLiteral("1"));
    m_fader->setGain(-40.0);
    QCOMPARE(m_fader->numericEntry()->text(), QStringLiteral("-1"));
    QTest::keyClick(m_fader->numericEntry(), Qt::Key_Escape);
    QCOMPARE(m_fader->numericEntry()->text(), QStringLiteral("-40"));
    QCOMPARE(m_fader->Gain(), -40.0);
}

void TestLevelGestures::screenReader_data()
{
    QTest::addColumn<QString>("kind");
    QTest::addColumn<QAccessible::Role>("role");
    QTest::newRow("fader") << "fader" << QAccessible::Slider;
    QTest::newRow("dial") << "dial" << QAccessible::Dial;
}

void TestLevelGestures::screenReader()
{
    QFETCH(QString, kind);
    LevelControl *read = control(kind);
    set(read, -12.0);
    QAccessibleInterface *reader = QAccessible::queryAccessibleInterface(read);
    QVERIFY(reader && reader->valueInterface());
    QTEST(reader->role(), "role");
    QVERIFY(!reader->text(QAccessible::Name).isEmpty());
    QCOMPARE(reader->text(QAccessible::Value), QStringLiteral("-12 dB"));
    QSignalSpy changes(read, &LevelControl::parametersChanged);
    reader->valueInterface()->setCurrentValue(-3.0);
    QCOMPARE(read->level(), -3.0);
    QCOMPARE(changes.count(), 1);
}

QTEST_MAIN(TestLevelGestures)
#include "tst_level_gestures.moc"
