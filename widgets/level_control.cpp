#include "widgets/level_control.h"

#include "widgets/accessible_levels.h"
#include "widgets/level_entry.h"
#include "widgets/paint_tools.h"
#include "widgets/shared_instance.h"

#include <QAccessible>
#include <QApplication>
#include <QMouseEvent>
#include <QWheelEvent>

#include <algorithm>
#include <cmath>

namespace {

constexpr double deadBand = 1.0; // pixels
constexpr double fineDrag = 0.1;

} // namespace

LevelControl::LevelControl(QWidget *parent)
    : QWidget(parent)
    , m_accessible(vm::sharedInstance<AccessibleLevels>())
{
    setFocusPolicy(Qt::StrongFocus);
    setAttribute(Qt::WA_Hover);
    setAttribute(Qt::WA_StyledBackground);
}

LevelControl::~LevelControl() = default;

QColor LevelControl::accentColor() const
{
    // Style sheets often give disabled widgets the colours of enabled ones, so the grey is mixed here.
    if (!isEnabled())
        return vm::mixed(palette().color(QPalette::Active, QPalette::Window),
                         palette().color(QPalette::Active, QPalette::WindowText), 0.3);
    return vm::seenOn(palette().color(QPalette::Active, QPalette::Window),
                      m_accent.isValid() ? m_accent : palette().color(QPalette::Active, QPalette::Highlight));
}

void LevelControl::setAccentColor(const QColor &color)
{
    m_accent = color;
    update();
}

void LevelControl::showLevel(double dB)
{
    if (!std::isnan(dB))
        store(std::clamp(dB, vm::lowestLevel, m_highest));
}

void LevelControl::pickLevel(double dB)
{
    if (std::isnan(dB))
        return;
    const double picked = std::clamp(vm::wholeLevel(dB), vm::lowestLevel, m_highest);
    if (picked == m_level)
        return;
    store(picked);
    emit parametersChanged();
}

void LevelControl::setHighest(double dB)
{
    m_highest = dB;
    m_level = std::min(m_level, dB);
    levelShown();
    update();
}

void LevelControl::store(double dB)
{
    if (dB == m_level)
        return;
    m_level = dB;
    levelShown();
    update();
    if (QAccessible::isActive()) {
        QAccessibleValueChangeEvent changed(this, dB);
        QAccessible::updateAccessibility(&changed);
    }
}

void LevelControl::keyPressEvent(QKeyEvent *event)
{
    if (const double step = vm::keyStep(*event); step != 0.0)
        pickLevel(vm::wholeLevel(m_level) + step);
    else if (event->key() == Qt::Key_Home)
        pickLevel(vm::lowestLevel);
    else if (event->key() == Qt::Key_End)
        pickLevel(m_highest);
    else if (vm::startsNumber(*event))
        openEntry()->startWith(event);
    else
        QWidget::keyPressEvent(event);
}

void LevelControl::wheelEvent(QWheelEvent *event)
{
    const bool focused = hasFocus() || isAncestorOf(QApplication::focusWidget());
    if (!focused || vm::WheelSteps::delta(*event) == 0) {
        event->ignore();
        return;
    }
    if (const double step = m_wheel.take(*event); step != 0.0)
        pickLevel(vm::wholeLevel(m_level) + step);
    event->accept();
}

void LevelControl::mousePressEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton) {
        event->ignore();
        return;
    }
    m_drag = Drag::Pressed;
    m_dragY = event->screenPos().y();
    m_dragShare = shareOf(m_level);
}

void LevelControl::mouseMoveEvent(QMouseEvent *event)
{
    if (m_drag == Drag::None)
        return;
    const double up = m_dragY - event->screenPos().y();
    if (m_drag == Drag::Pressed && std::abs(up) <= deadBand)
        return;
    const double counted = m_drag == Drag::Pressed ? up - std::copysign(deadBand, up) : up;
    m_drag = Drag::Moving;
    m_dragY = event->screenPos().y();
    dragBy(event->modifiers().testFlag(Qt::ControlModifier) ? counted * fineDrag : counted);
}

/// The drag keeps its own place on the way, so that slow moves add up and a level set by program meanwhile
/// does not move the place that the user has dragged to.
void LevelControl::dragBy(double pixels)
{
    m_dragShare = std::clamp(m_dragShare + pixels / std::max(1.0, dragLength()), 0.0, 1.0);
    pickLevel(levelAt(m_dragShare));
}

void LevelControl::mouseReleaseEvent(QMouseEvent *event)
{
    if (event->button() == Qt::LeftButton)
        m_drag = Drag::None;
    update();
}

void LevelControl::mouseDoubleClickEvent(QMouseEvent *event)
{
    if (event->button() == Qt::LeftButton)
        pickLevel(doubleClickLevel());
}

void LevelControl::focusOutEvent(QFocusEvent *event)
{
    m_wheel.reset();
    QWidget::focusOutEvent(event);
}

void LevelControl::changeEvent(QEvent *event)
{
    if (event->type() == QEvent::EnabledChange && !isEnabled())
        m_drag = Drag::None;
    QWidget::changeEvent(event);
}
