#include "widgets/peak_readout.h"

#include "widgets/level_taper.h"
#include "widgets/paint_tools.h"
#include "widgets/vm_meter.h"

#include <QPainter>

namespace {

constexpr int numberPixels = 10;
constexpr QColor clipped(0xd3, 0x2f, 0x2f);

} // namespace

PeakReadout::PeakReadout(VMMeter *meter, QWidget *parent)
    : QAbstractButton(parent)
    , m_meter(meter)
{
    setFocusPolicy(Qt::TabFocus);
    setAttribute(Qt::WA_Hover);
    setToolTip(tr("Loudest level in dB. Click to clear it."));
    connect(meter, &VMMeter::maximumChanged, this, &PeakReadout::showMaximum);
    connect(this, &QAbstractButton::clicked, meter, &VMMeter::clearMaximum);
    showMaximum();
}

void PeakReadout::showMaximum()
{
    const bool isSilent = m_meter->maximum() <= vm::lowestLevel;
    setText(isSilent ? QStringLiteral("–") : vm::levelNumber(m_meter->maximum()));
    setAccessibleDescription(isSilent ? tr("silent") : vm::levelText(m_meter->maximum()));
}

void PeakReadout::paintEvent(QPaintEvent *)
{
    const QColor window = palette().color(QPalette::Active, QPalette::Window);
    const QColor ink = palette().color(QPalette::Active, QPalette::WindowText);
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(vm::mixed(window, ink, underMouse() ? 0.6 : 0.25), 1.0));
    painter.setBrush(m_meter->isClipped() ? clipped : palette().color(QPalette::Active, QPalette::Base));
    painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), 2.0, 2.0);
    QFont number = font();
    number.setPixelSize(numberPixels);
    number.setBold(m_meter->isClipped());
    painter.setFont(number);
    painter.setPen(m_meter->isClipped() ? QColor(Qt::white)
                                        : vm::mixed(window, ink, isEnabled() ? 0.85 : 0.4));
    painter.drawText(rect(), Qt::AlignCenter, text());
    if (hasFocus())
        vm::paintFocusFrame(painter, rect(), vm::focusColor(palette()));
}
