#include "widgets/vm_led.h"

VmLED::VmLED(QWidget *parent)
    : QWidget(parent)
{
}

void VmLED::setState(bool on)
{
    m_on = on;
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

QSize VmLED::sizeHint() const
{
    const int pixels = qMax(10, qRound(m_diameter * logicalDpiX() / 25.4));
    return {pixels, pixels};
}
