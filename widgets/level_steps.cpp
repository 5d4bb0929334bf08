#include "widgets/level_steps.h"

#include <QKeyEvent>
#include <QWheelEvent>

namespace vm {

namespace {

constexpr Qt::KeyboardModifiers shortcutModifiers = Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier;

double stepSize(Qt::KeyboardModifiers modifiers)
{
    return modifiers.testFlag(Qt::ShiftModifier) ? 3.0 : 1.0;
}

} // namespace

double keyStep(const QKeyEvent &event)
{
    if (event.modifiers() & (Qt::AltModifier | Qt::MetaModifier))
        return 0.0;
    switch (event.key()) {
    case Qt::Key_Up:
    case Qt::Key_Right:
        return stepSize(event.modifiers());
    case Qt::Key_Down:
    case Qt::Key_Left:
        return -stepSize(event.modifiers());
    case Qt::Key_PageUp:
        return 6.0;
    case Qt::Key_PageDown:
        return -6.0;
    default:
        return 0.0;
    }
}

bool startsNumber(const QKeyEvent &event)
{
    const QString text = event.text();
    if (text.size() != 1 || event.modifiers() & shortcutModifiers)
        return false;
    return text.at(0).isDigit() || QStringLiteral("+-.,").contains(text.at(0));
}

int WheelSteps::delta(const QWheelEvent &event)
{
    // Some platforms turn the wheel sideways while Shift or Alt is held.
    const bool mayBeTurned = event.modifiers() & (Qt::ShiftModifier | Qt::AltModifier);
    const QPoint angle = event.angleDelta();
    return angle.y() == 0 && mayBeTurned ? angle.x() : angle.y();
}

double WheelSteps::take(const QWheelEvent &event)
{
    const int turned = delta(event);
    if ((turned > 0) != (m_rest > 0))
        m_rest = 0; // turning back answers at once
    m_rest += turned;
    const int notches = m_rest / QWheelEvent::DefaultDeltasPerStep;
    m_rest -= notches * QWheelEvent::DefaultDeltasPerStep;
    return notches * stepSize(event.modifiers());
}

} // namespace vm
