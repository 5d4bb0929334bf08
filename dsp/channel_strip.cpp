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

void ChannelStrip::adopt(const Parts &parts)
{
    m_parts = parts;
    VmDspGain *fader = parts.fader;
    fader->setLabelColor(Qt::white);
    fader->setShowLabel(false);
    fader->setShowButton1(false);
    fader->setShowButton2(false);
    fader->setButton1_text(tr("Mute"));
    fader->setButton2_text(tr("Invert"));
    fader->numericEntry()->setDecimals(0);
    fader->numericEntry()->setSingleStep(1.0);
    setFocusProxy(fader);
}

void ChannelStrip::setLabel(const QString &text)
{
    m_parts.label->setText(text);
    m_parts.fader->setAccessibleName(tr("Gain %1").arg(text));
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
        m_parts.fader->getMeter()->setDbValuePort1(val);
}

void ChannelStrip::showChecked(QAbstractButton *button, const QVariant &value)
{
    const QSignalBlocker silent(button);
    button->setChecked(value.toBool());
}

void ChannelStrip::showGain(const QVariant &value)
{
    const QSignalBlocker silent(m_parts.fader);
    m_parts.fader->setGain(value.toDouble());
}

double ChannelStrip::gain() const
{
    return m_parts.fader->Gain();
}

void ChannelStrip::showEvent(QShowEvent *event)
{
    QWidget::showEvent(event);
    alignScale();
}

void ChannelStrip::alignScale()
{
    // The scale's column is as high as the fader, whose travel is shorter by the handle and the entry.
    const QRect travel = m_parts.fader->travelRect();
    const int halfText = m_parts.scaleTop->fontMetrics().height() / 2;
    const int below = m_parts.fader->height() - travel.bottom();
    m_parts.scaleTop->setContentsMargins(0, qMax(0, travel.top() - halfText), 0, 0);
    m_parts.scaleBottom->setContentsMargins(0, 0, 0, qMax(0, below - halfText));
}
