#include "widgets/vm_dial.h"

VmDial::VmDial(QWidget *parent)
    : LevelControl(parent)
{
    showLevel(-100.0);
}

void VmDial::setTextColor(const QColor &color)
{
    m_textColor = color;
    update();
}

void VmDial::setBaseColor(const QColor &color)
{
    m_baseColor = color;
    update();
}

void VmDial::setGaugeSize(int pixels)
{
    m_gaugeSize = qMax(2, pixels);
    update();
}

void VmDial::setVal(double dB)
{
    showLevel(dB);
}

QSize VmDial::sizeHint() const
{
    return {58, 58};
}
