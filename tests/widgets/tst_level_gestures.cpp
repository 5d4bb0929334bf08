#include "widgets/level_control.h"
#include "widgets/vm_dial.h"
#include "widgets/vm_dsp_gain.h"

#include <QAccessible>
#include <QDialog>
#include <QDoubleSpinBox>
#include <QMouseEvent>
#include <QPushButton>
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
    void wheel();
    void wheelWithoutFocusGoesToTheWindow();
    void drag_data();
    void drag();
    void dragGoesOnFromTheHandAfterALevelSetByProgram();
    void doubleClick();
    void typing_data();
    void typing();
    void aLevelSetByProgramLeavesTypingAlone();
    void screenReader();

private:
    QVector<LevelControl *> controls() const { return {m_fader, m_dial}; }
    LevelControl *control(const QString &kind) const { return controls().at(kind == QLatin1String("dial")); }
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
    auto *accept = new QPushButton(m_window.data());
    accept->setDefault(true);
    connect(accept, &QPushButton::clicked, m_window.data(), &QDialog::accept);
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

void TestLevelGestures::keys_data()
{
    QTest::addColumn<double>("start");
    QTest::addColumn<int>("key");
    QTest::addColumn<Qt::KeyboardModifiers>("modifiers");
    QTest::addColumn<double>("level");
    const auto row = [](const char *name, double start, Qt::Key key, double level,
                        Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        QTest::newRow(name) << start << int(key) << modifiers << level;
    };
    row("up", -6.0, Qt::Key_Up, -5.0);
    row("down", -6.0, Qt::Key_Down, -7.0);
    row("left, three", -6.0, Qt::Key_Left, -9.0, Qt::ShiftModifier);
    row("up, three, to the end", 18.0, Qt::Key_Up, 20.0, Qt::ShiftModifier);
    row("page down to the end", -97.0, Qt::Key_PageDown, -100.0);
    row("home", -6.0, Qt::Key_Home, -100.0);
    row("end", -6.0, Qt::Key_End, 20.0);
    row("at the end already", 20.0, Qt::Key_Up, 20.0);
    row("from a fraction", 5.9, Qt::Key_Up, 7.0);
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

void TestLevelGestures::wheel()
{
    for (LevelControl *control : controls()) {
        control->setFocus();
        const auto turned = [&](const QVector<QPoint> &angles, Qt::KeyboardModifiers modifiers) {
            set(control, -20.0);
            for (const QPoint &angle : angles)
                turnWheel(control, angle, modifiers);
            return control->level();
        };
        QCOMPARE(turned({{0, 120}}, Qt::NoModifier), -19.0);
        QCOMPARE(turned({{0, -240}}, Qt::NoModifier), -22.0);
        QCOMPARE(turned({{0, 120}}, Qt::ShiftModifier), -17.0);
        QCOMPARE(turned({{120, 0}}, Qt::ShiftModifier), -17.0); // some platforms turn it sideways
        QCOMPARE(turned({{120, 0}}, Qt::NoModifier), -20.0); // scrolls sideways
        QCOMPARE(turned({{0, 50}, {0, 50}, {0, 50}}, Qt::NoModifier), -19.0); // small deltas add up
        QCOMPARE(turned({{0, -60}, {0, 120}}, Qt::NoModifier), -19.0); // turning back answers at once
    }
}

void TestLevelGestures::wheelWithoutFocusGoesToTheWindow()
{
    const QVector<QWidget *> turned{m_fader, m_dial, m_fader->numericEntry()};
    for (QWidget *widget : turned) {
        m_window->setFocus();
        m_window->wheels = 0;
        m_fader->setGain(-20.0);
        m_dial->setVal(-20.0);
        LevelControl *control = widget == m_dial ? controls().at(1) : m_fader;
        turnWheel(widget, {0, 120});
        QCOMPARE(control->level(), -20.0);
        QCOMPARE(m_window->wheels, 1);
        widget->setFocus();
        turnWheel(widget, {0, 120});
        QCOMPARE(control->level(), -19.0);
        QCOMPARE(m_window->wheels, 1);
    }
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
    QTest::newRow("fader, dead band") << "fader" << -33.0 << 1 << none << -33.0;
    QTest::newRow("fader, up along the scale") << "fader" << 0.0 << 34 << none << 10.0;
    QTest::newRow("fader, down along the scale") << "fader" << 0.0 << -65 << none << -20.0;
    QTest::newRow("fader, finely") << "fader" << 0.0 << 101 << ctrl << 3.0;
    QTest::newRow("fader, past the end") << "fader" << 0.0 << 500 << none << 20.0;
    QTest::newRow("dial, dead band") << "dial" << -33.0 << -1 << none << -33.0;
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

void TestLevelGestures::doubleClick()
{
    const auto clicked = [this](LevelControl *control, double start, Qt::MouseButton button) {
        set(control, start);
        QTest::mouseDClick(control, button, {}, {10, 30});
        return control->level();
    };
    QCOMPARE(clicked(m_fader, -33.0, Qt::LeftButton), 0.0);
    QCOMPARE(clicked(m_fader, -33.0, Qt::RightButton), -33.0);
    QCOMPARE(clicked(m_dial, -33.0, Qt::LeftButton), -100.0);
    QCOMPARE(clicked(m_dial, -100.0, Qt::LeftButton), 0.0);
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
    QDoubleSpinBox *entry = typedAt->findChild<QDoubleSpinBox *>(QStringLiteral("numericEntry"));
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

void TestLevelGestures::screenReader()
{
    for (LevelControl *control : controls()) {
        set(control, -12.0);
        QAccessibleInterface *reader = QAccessible::queryAccessibleInterface(control);
        QVERIFY(reader && reader->valueInterface());
        QCOMPARE(reader->role(), control == m_dial ? QAccessible::Dial : QAccessible::Slider);
        QVERIFY(!reader->text(QAccessible::Name).isEmpty());
        QCOMPARE(reader->text(QAccessible::Value), QStringLiteral("-12 dB"));
        QSignalSpy changes(control, &LevelControl::parametersChanged);
        reader->valueInterface()->setCurrentValue(-3.0);
        QCOMPARE(control->level(), -3.0);
        QCOMPARE(changes.count(), 1);
    }
}

QTEST_MAIN(TestLevelGestures)
#include "tst_level_gestures.moc"
