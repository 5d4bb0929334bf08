#include "dsp/channel_strip.h"

#include "widgets/vm_dsp_gain.h"
#include "widgets/vm_meter.h"

#include <QAbstractButton>
#include <QDoubleSpinBox>
#include <QLabel>
#include <QSignalBlocker>

ChannelStrip::ChannelStrip(QWidget *parent)
    : QWidget(parent)
{
}

void ChannelStrip::adopt(QLabel *label, VmDspGain *fader)
{
    m_label = label;
    m_fader = fader;
    fader->setLabelColor(Qt::white);
    fader->setShowLabel(false);
    fader->setShowButton1(false);
    fader->setShowButton2(false);
    fader->setButton1_text(tr("Mute"));
    fader->setButton2_text(tr("Invert"));
    fader->numericEntry()->setDecimals(0);
    fader->numericEntry()->setSingleStep(1.0);
}

void ChannelStrip::setLabel(const QString &text)
{
    m_label->setText(text);
    m_fader->setAccessibleName(tr("Gain %1").arg(text));
}

void ChannelStrip::onEnable(bool enabled)
{
    setEnabled(enabled);
}

void ChannelStrip::onChanged(const QPair<int, QVariant> &record)
{
    const QSignalBlocker silent(this);
    showValue(record.first, record.second);
}

void ChannelStrip::onUiChanged(const QPair<int, QVariant> &record)
{
    onChanged(record);
    emit uiChanged(record);
}

void ChannelStrip::onLevelChange(int val)
{
    if (isEnabled())
        m_fader->getMeter()->setDbValuePort1(val);
}

void ChannelStrip::showChecked(QAbstractButton *button, const QVariant &value)
{
    const QSignalBlocker silent(button);
    button->setChecked(value.toBool());
}

void ChannelStrip::showGain(const QVariant &value)
{
    const QSignalBlocker silent(m_fader);
    m_fader->setGain(value.toDouble());
}

double ChannelStrip::gain() const
{
    return m_fader->Gain();
}
