#include "widgets/vm_meter.h"

#include "widgets/accessible_levels.h"
#include "widgets/shared_instance.h"

#include <QMouseEvent>
#include <QPainter>

#include <cmath>

VMMeter::VMMeter(QWidget *parent)
    : QWidget(parent)
    , m_accessible(vm::sharedInstance<AccessibleLevels>())
    , m_ticker(vm::sharedInstance<vm::MeterTicker>())
{
    setAttribute(Qt::WA_OpaquePaintEvent); // a moving bar must not repaint what lies behind the meter
    setAccessibleName(tr("Level"));
}

VMMeter::~VMMeter()
{
    m_ticker->remove(this);
}

void VMMeter::setDbValuePort1(double dB)
{
    if (std::isnan(dB))
        return;
    m_value = dB;
    m_loudest = std::max(m_loudest, dB);
    // A moving meter looks at its levels at its next tick: they may come faster than anyone can see.
    if (m_animated)
        return;
    takeLevels();
    refresh();
    animate();
}

/// The loudest of the levels since the last look shows, the last one is where the bar falls to.
void VMMeter::takeLevels()
{
    if (m_loudest == nothingArrived)
        return;
    const qint64 now = m_ticker->now();
    const double before = maximum();
    m_ballistics.arrive(m_loudest, now);
    m_ballistics.arrive(m_value, now);
    m_loudest = nothingArrived;
    if (maximum() > before)
        emit maximumChanged();
}

void VMMeter::setHighest(double dB)
{
    m_highest = dB;
    refresh();
    update();
}

void VMMeter::clearMaximum()
{
    takeLevels();
    m_ballistics.clearMaximum();
    refresh();
    emit maximumChanged();
}

bool VMMeter::advanceTo(qint64 now)
{
    takeLevels();
    m_ballistics.advance(now);
    refresh();
    m_animated = m_ballistics.isMoving();
    return m_animated;
}

void VMMeter::animate()
{
    if (!isVisible() || !m_ballistics.isMoving())
        return;
    m_animated = true;
    m_ticker->add(this);
}

vm::MeterFace::Reading VMMeter::reading() const
{
    const int steps = vm::MeterFace::steps(size(), devicePixelRatioF());
    const auto pixelAt = [this, steps](double dB) { return qRound(vm::travelShare(dB, m_highest) * steps); };
    return {pixelAt(m_ballistics.bar()), pixelAt(m_ballistics.peak()), m_ballistics.isClipped()};
}

void VMMeter::refresh()
{
    const vm::MeterFace::Reading now = reading();
    if (now == m_shown)
        return;
    update(vm::MeterFace::changed(size(), devicePixelRatioF(), m_shown, now));
    m_shown = now;
}

void VMMeter::paintEvent(QPaintEvent *)
{
    takeLevels();
    m_shown = reading(); // another one on a screen with another pixel ratio
    QPainter painter(this);
    m_face.paint(painter, size(), devicePixelRatioF(), m_highest, isEnabled(), m_shown);
}

void VMMeter::mousePressEvent(QMouseEvent *event)
{
    if (event->button() == Qt::LeftButton)
        clearMaximum();
    else
        event->ignore();
}

/// Kept from the fader behind the meter, which would take the second click for its own.
void VMMeter::mouseDoubleClickEvent(QMouseEvent *event)
{
    mousePressEvent(event);
}

void VMMeter::showEvent(QShowEvent *)
{
    m_ballistics.advance(m_ticker->now());
    refresh();
    animate();
}

void VMMeter::hideEvent(QHideEvent *)
{
    m_animated = false;
    m_ticker->remove(this);
}

void VMMeter::resizeEvent(QResizeEvent *)
{
    m_shown = reading();
}

void VMMeter::changeEvent(QEvent *event)
{
    if (event->type() == QEvent::EnabledChange)
        update();
    QWidget::changeEvent(event);
}
