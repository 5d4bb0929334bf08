#include "widgets/vm_dsp_gain.h"

#include "widgets/vm_meter.h"

#include <QDoubleSpinBox>
#include <QLabel>
#include <QPushButton>

VmDspGain::VmDspGain(QWidget *parent)
    : LevelControl(parent)
    , m_label(new QLabel(tr("Gain"), this))
    , m_meter(new VMMeter(this))
    , m_entry(new QDoubleSpinBox(this))
    , m_button1(new QPushButton(this))
    , m_button2(new QPushButton(this))
{
    m_entry->setObjectName(QStringLiteral("numericEntry"));
}

void VmDspGain::setGain(double dB)
{
    showLevel(dB);
}

void VmDspGain::setLabel(const QString &text)
{
    m_label->setText(text);
}

void VmDspGain::setLabelColor(const QColor &color)
{
    m_label->setStyleSheet(QStringLiteral("color: %1;").arg(color.name(QColor::HexArgb)));
}

void VmDspGain::setShowLabel(bool shown)
{
    m_label->setVisible(shown);
}

void VmDspGain::setShowButton1(bool shown)
{
    m_button1->setVisible(shown);
}

void VmDspGain::setShowButton2(bool shown)
{
    m_button2->setVisible(shown);
}

void VmDspGain::setButton1_text(const QString &text)
{
    m_button1->setText(text);
}

void VmDspGain::setButton2_text(const QString &text)
{
    m_button2->setText(text);
}

QSize VmDspGain::sizeHint() const
{
    return {57, 240};
}

QSize VmDspGain::minimumSizeHint() const
{
    return {57, 150};
}
