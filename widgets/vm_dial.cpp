#include "widgets/vm_dial.h"

#include "widgets/dial_face.h"
#include "widgets/level_entry.h"
#include "widgets/paint_tools.h"

#include <QPainter>
#include <QSignalBlocker>

namespace {

constexpr double restAtZero = 0.03; // share of a drag from end to end

} // namespace

VmDial::VmDial(QWidget *parent)
    : LevelControl(parent)
{
    setAccessibleName(tr("Level"));
    setToolTip(tr("Drag, scroll or type a level in dB.\nCtrl drags finely, a double-click switches between "
                  "-100 and 0 dB."));
    showLevel(vm::lowestLevel);
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

double VmDial::doubleClickLevel() const
{
    return level() > vm::lowestLevel ? vm::lowestLevel : 0.0;
}

double VmDial::shareOf(double dB) const
{
    const double rested = dB > 0.0 ? 1.0 : dB < 0.0 ? 0.0 : 0.5;
    return vm::travelShare(dB, highest()) * (1.0 - restAtZero) + rested * restAtZero;
}

double VmDial::levelAt(double share) const
{
    const double zero = vm::travelShare(0.0, highest()) * (1.0 - restAtZero);
    if (share > zero && share < zero + restAtZero)
        return 0.0;
    return vm::levelAtShare((share > zero ? share - restAtZero : share) / (1.0 - restAtZero), highest());
}

LevelEntry *VmDial::openEntry()
{
    if (!m_entry)
        makeEntry();
    const QSignalBlocker silent(m_entry);
    m_entry->setValue(vm::wholeLevel(level()));
    m_entry->setAccessibleName(tr("%1, new level in dB").arg(accessibleName()));
    placeEntry();
    m_entry->show();
    return m_entry;
}

void VmDial::makeEntry()
{
    m_entry = new LevelEntry(this);
    m_entry->setObjectName(QStringLiteral("numericEntry"));
    m_entry->setRange(vm::lowestLevel, highest());
    setTabOrder(this, m_entry); // made late, it would come last
    const auto take = [this] { pickLevel(m_entry->value()); };
    connect(m_entry, QOverload<double>::of(&QDoubleSpinBox::valueChanged), this, take);
    connect(m_entry, &LevelEntry::typed, this, take);
    connect(m_entry, &LevelEntry::editingFinished, this, &VmDial::closeEntry);
    connect(m_entry, &LevelEntry::left, this, &VmDial::closeEntry);
}

void VmDial::placeEntry()
{
    QRect box(0, 0, width() - 2, m_entry->sizeHint().height());
    box.moveCenter(rect().center());
    m_entry->setGeometry(box);
}

void VmDial::closeEntry()
{
    if (m_entry->hasFocus())
        setFocus(Qt::OtherFocusReason);
    m_entry->hide();
}

void VmDial::resizeEvent(QResizeEvent *)
{
    if (m_entry)
        placeEntry();
}

void VmDial::paintEvent(QPaintEvent *)
{
    const QColor paletteText = palette().color(QPalette::Active, QPalette::WindowText);
    vm::DialState state;
    state.share = vm::travelShare(level(), highest());
    state.tick = vm::travelShare(0.0, highest());
    state.number = vm::levelNumber(level());
    state.font = font();
    state.text = m_textColor.isValid() ? m_textColor : paletteText;
    state.base = m_baseColor.isValid() ? m_baseColor : paletteText;
    state.accent = accentColor();
    state.frame = vm::focusColor(palette());
    state.gauge = m_gaugeSize;
    state.hovered = underMouse() && isEnabled();
    state.focused = hasFocus();
    if (!isEnabled())
        state.text.setAlphaF(0.45);
    QPainter painter(this);
    vm::paintDial(painter, rect(), state);
}
