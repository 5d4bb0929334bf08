#include "dsp/device_badge.h"

#include "widgets/paint_tools.h"

#include <QPainter>

namespace {

constexpr int barWidth = 4; // px
constexpr int gap = 6;

} // namespace

DeviceBadge::DeviceBadge(const QColor &color, QWidget *parent)
    : QWidget(parent)
    , m_color(color)
{
    setObjectName(QStringLiteral("device_badge"));
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
}

void DeviceBadge::setName(const QString &name)
{
    m_name = name;
    setAccessibleName(tr("Device %1").arg(name));
    setToolTip(name.toHtmlEscaped());
    update();
}

void DeviceBadge::paintEvent(QPaintEvent *)
{
    const QColor window = palette().color(QPalette::Active, QPalette::Window);
    const QColor ink = palette().color(QPalette::Active, QPalette::WindowText);
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(vm::mixed(window, ink, 0.10));
    painter.drawRoundedRect(rect(), 3.0, 3.0);
    painter.setBrush(m_color.isValid() ? vm::seenOn(window, m_color) : vm::mixed(window, ink, 0.5));
    painter.drawRoundedRect(QRect(0, 0, barWidth, height()), 2.0, 2.0);
    QFont fitting = font();
    fitting.setPixelSize(qMin(QFontInfo(fitting).pixelSize(), height() - 6));
    painter.setFont(fitting);
    const QRect room = rect().adjusted(barWidth + gap, 0, -gap, 0);
    painter.setPen(ink);
    painter.drawText(room, Qt::AlignVCenter | Qt::AlignLeft,
                     QFontMetrics(fitting).elidedText(m_name, Qt::ElideRight, room.width()));
}
