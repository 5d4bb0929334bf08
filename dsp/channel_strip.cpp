#include "dsp/channel_strip.h"

#include "dsp/port_colors.h"
#include "widgets/paint_tools.h"
#include "widgets/peak_readout.h"
#include "widgets/vm_dsp_gain.h"
#include "widgets/vm_meter.h"

#include <QAbstractButton>
#include <QDoubleSpinBox>
#include <QLabel>
#include <QLayout>
#include <QPainter>
#include <QSignalBlocker>

namespace {

// px
constexpr int BarHeight = 3;
constexpr int Inside = 7; // from the strip's edge to what is on it
constexpr int BottomRoom = 12;

} // namespace

ChannelStrip::ChannelStrip(QWidget *parent)
    : QWidget(parent)
{
}

void ChannelStrip::adopt(const Parts &parts)
{
    m_parts = parts;
    setContentsMargins(Inside, BarHeight + 5, Inside - 2, BottomRoom - layout()->contentsMargins().bottom());
    VmDspGain *fader = parts.fader;
    fader->setLabelColor(Qt::white);
    fader->setShowLabel(false);
    fader->setShowButton1(false);
    fader->setShowButton2(false);
    fader->setButton1_text(tr("Mute"));
    fader->setButton2_text(tr("Invert"));
    fader->numericEntry()->setDecimals(0);
    fader->numericEntry()->setSingleStep(1.0);
    fader->setEndsNumbered(false); // the form's labels are there
    for (QLabel *end : {parts.scaleTop, parts.scaleBottom}) {
        QFont narrow = end->font();
        narrow.setStretch(QFont::SemiCondensed);
        end->setFont(narrow);
        end->setProperty("role", QStringLiteral("caption"));
        end->setSizePolicy(QSizePolicy::Ignored, end->sizePolicy().verticalPolicy());
    }
    setFocusProxy(fader);
}

void ChannelStrip::setLabel(const QString &text)
{
    m_parts.label->setText(text);
    m_parts.mute->setAccessibleName(tr("Mute %1").arg(text));
    m_parts.fader->setAccessibleName(tr("Gain %1").arg(text));
    m_parts.fader->numericEntry()->setAccessibleName(tr("Gain %1 in dB").arg(text));
    m_parts.fader->getMeter()->setAccessibleName(tr("Level %1").arg(text));
    m_parts.fader->peakReadout()->setAccessibleName(tr("Peak %1").arg(text));
}

void ChannelStrip::setColor(const QColor &color)
{
    m_color = color;
    m_parts.fader->setAccentColor(color);
}

void ChannelStrip::onEnable(bool enabled)
{
    setEnabled(enabled);
}

void ChannelStrip::onChanged(const QPair<int, QVariant> &record)
{
    const QSignalBlocker silent(this);
    showValue(record.first, record.second);
    update();
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

void ChannelStrip::paintEvent(QPaintEvent *)
{
    const QColor window = palette().color(QPalette::Active, QPalette::Window);
    const QColor ink = palette().color(QPalette::Active, QPalette::WindowText);
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF panel = QRectF(rect()).adjusted(3.5, 3.5, -3.5, -3.5);
    painter.setPen(QPen(vm::mixed(window, ink, 0.20), 1.0));
    painter.drawRoundedRect(panel, 4.0, 4.0);
    const bool isMuted = m_parts.mute->isChecked();
    painter.setPen(Qt::NoPen);
    painter.setBrush(vm::seenOn(window, isMuted ? QColor(color::muted) : m_color));
    painter.drawRoundedRect(QRectF(panel.x(), panel.y(), panel.width(), BarHeight), 1.5, 1.5);
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
