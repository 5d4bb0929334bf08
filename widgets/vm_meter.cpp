#include "widgets/vm_meter.h"

VMMeter::VMMeter(QWidget *parent)
    : QWidget(parent)
{
}

void VMMeter::setDbValuePort1(double dB)
{
    m_value = dB;
    update();
}
