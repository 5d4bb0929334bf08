#include "widgets/vm_led.h"

#include "widgets/paint_tools.h"

#include <QPainter>
#include <QRadialGradient>

namespace {

constexpr double millimetresPerInch = 25.4;
constexpr int smallest = 10; // px, below that a colour is hard to tell
constexpr int halo = 2; // px of glow around the light

} // namespace

VmLED::VmLED(QWidget *parent)
    : QWidget(parent)
{
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    setAttribute(Qt::WA_StyledBackground);
    setAccessibleName(tr("Indicator light"));
    setAccessibleDescription(tr("off"));
}

void VmLED::setState(bool on)
{
    if (on == m_on)
        return;
    m_on = on;
    setAccessibleDescription(on ? tr("on") : tr("off"));
    update();
}

void VmLED::setColor(const QColor &color)
{
    m_color = color;
    update();
}

void VmLED::setDiameter(double millimetres)
{
    m_diameter = millimetres;
    updateGeometry();
    update();
}

int VmLED::pixels() const
{
    return qMax(smallest, qRound(m_diameter * logicalDpiX() / millimetresPerInch));
}

QSize VmLED::sizeHint() const
{
    const int side = pixels() + 2 * halo;
    return {side, side};
}

void VmLED::paintEvent(QPaintEvent *)
{
    QRectF light(0.0, 0.0, pixels(), pixels());
    light.moveCenter(QRectF(rect()).center());
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QColor color = isEnabled() ? m_color : QColor::fromHsv(0, 0, qGray(m_color.rgb()));
    if (m_on)
        paintLit(painter, light, color);
    else
        paintDark(painter, light, color);
}

void VmLED::paintLit(QPainter &painter, const QRectF &light, const QColor &color) const
{
    QColor glow = color;
    glow.setAlphaF(0.35);
    painter.setPen(Qt::NoPen);
    painter.setBrush(glow);
    painter.drawEllipse(light.adjusted(-halo, -halo, halo, halo));
    QRadialGradient body(light.center(), light.width() / 2.0,
                         light.center() - QPointF(light.width(), light.height()) / 6.0);
    body.setColorAt(0.0, vm::mixed(color, Qt::white, 0.75));
    body.setColorAt(0.5, color);
    body.setColorAt(1.0, vm::mixed(color, Qt::black, 0.18));
    painter.setPen(QPen(vm::mixed(color, Qt::black, 0.45), 1.0));
    painter.setBrush(body);
    painter.drawEllipse(light.adjusted(0.5, 0.5, -0.5, -0.5));
}

/// Hollow, so that the state can be told without the colour.
void VmLED::paintDark(QPainter &painter, const QRectF &light, const QColor &color) const
{
    const QColor text = palette().color(QPalette::WindowText);
    painter.setPen(QPen(vm::mixed(text, color, 0.25), 1.5));
    painter.setBrush(Qt::NoBrush);
    painter.setOpacity(0.65);
    painter.drawEllipse(light.adjusted(1.0, 1.0, -1.0, -1.0));
}
