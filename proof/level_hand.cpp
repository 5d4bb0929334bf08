#include "proof/level_hand.h"

#include <QApplication>
#include <QPointer>
#include <QRandomGenerator>
#include <QTest>
#include <QWheelEvent>

namespace proof {

namespace {

constexpr double Lowest = -100;
constexpr double Highest = 20;
constexpr double End = 1000; // either one, once it is bounded

struct Stroke
{
    Qt::Key key;
    Qt::KeyboardModifiers modifiers;
    double step; // dB
};

/// Those that mean the same at a fader and at a dial in a table.
constexpr Stroke Everywhere[] = {{Qt::Key_PageUp, {}, 6}, {Qt::Key_PageDown, {}, -6}};
const Stroke AtFaders[] = {{Qt::Key_Up, {}, 1},
                           {Qt::Key_Down, {}, -1},
                           {Qt::Key_Up, Qt::ShiftModifier, 3},
                           {Qt::Key_Down, Qt::ShiftModifier, -3},
                           {Qt::Key_Home, {}, -End},
                           {Qt::Key_End, {}, End}};

bool isFader(const QWidget *level)
{
    return level->inherits("VmDspGain");
}

double strike(QWidget *level, QRandomGenerator *dice)
{
    const bool everywhere = !isFader(level) || dice->bounded(4) == 0;
    const Stroke &stroke = everywhere ? Everywhere[dice->bounded(int(std::size(Everywhere)))]
                                      : AtFaders[dice->bounded(int(std::size(AtFaders)))];
    QTest::keyClick(level, stroke.key, stroke.modifiers);
    return stroke.step;
}

/// One notch. Without the keyboard's focus it is the page that scrolls.
double turnWheel(QWidget *level, QRandomGenerator *dice)
{
    const bool focused = level->hasFocus() || level->isAncestorOf(QApplication::focusWidget());
    const int notch = dice->bounded(2) == 0 ? 120 : -120;
    const QPoint at = level->rect().center();
    QWheelEvent event(at, level->mapToGlobal(at), {}, {0, notch}, Qt::NoButton, Qt::NoModifier,
                      Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(level, &event);
    return focused ? notch / 120.0 : 0.0;
}

/// The level that a double-click leads to.
double clickTwice(QWidget *level)
{
    const double target = !isFader(level) && levelOf(level) > Lowest ? Lowest : 0;
    QTest::mouseDClick(level, Qt::LeftButton, {}, level->rect().center());
    return target;
}

} // namespace

double levelOf(const QWidget *level)
{
    return level->property(isFader(level) ? "gain" : "val").toDouble();
}

QString changeLevel(QWidget *level, QRandomGenerator *dice)
{
    const QPointer<QWidget> alive(level);
    const double before = levelOf(level);
    const int kind = dice->bounded(5);
    double expected = 0;
    if (kind == 0)
        expected = clickTwice(level);
    else
        expected = before + (kind == 1 ? turnWheel(level, dice) : strike(level, dice));
    expected = qBound(Lowest, expected, Highest);
    if (!alive || levelOf(level) == expected)
        return {};
    return QStringLiteral("a level of %1 dB became %2 instead of %3 dB by %4")
        .arg(before)
        .arg(levelOf(level))
        .arg(expected)
        .arg(kind == 0       ? QStringLiteral("a double-click")
                 : kind == 1 ? QStringLiteral("the wheel")
                             : QStringLiteral("a key"));
}

} // namespace proof
