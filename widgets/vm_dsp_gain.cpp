#include "widgets/vm_dsp_gain.h"

#include "widgets/level_entry.h"
#include "widgets/paint_tools.h"
#include "widgets/peak_readout.h"
#include "widgets/vm_meter.h"

#include <QDynamicPropertyChangeEvent>
#include <QLabel>
#include <QPainter>
#include <QPushButton>
#include <QSignalBlocker>
#include <QVBoxLayout>

namespace {

constexpr char highestGainProperty[] = "maxgain";
constexpr QSize smallest{57, 150};

} // namespace

VmDspGain::VmDspGain(QWidget *parent)
    : LevelControl(parent)
    , m_label(new QLabel(tr("Gain"), this))
    , m_meter(new VMMeter(this))
    , m_readout(new PeakReadout(m_meter, this))
    , m_entry(new LevelEntry(this))
    , m_button1(addButton("button1"))
    , m_button2(addButton("button2"))
{
    setAccessibleName(tr("Gain"));
    setToolTip(tr("Drag, scroll or type a gain in dB.\nCtrl drags finely, a double-click goes to 0 dB."));
    m_label->setAlignment(Qt::AlignCenter);
    m_label->hide();
    m_meter->setObjectName(QStringLiteral("meter"));
    m_meter->setToolTip(tr("Level in dB. Click to clear peak and clip mark."));
    m_entry->setObjectName(QStringLiteral("numericEntry"));
    m_entry->setAccessibleName(tr("Gain in dB"));
    m_entry->setRange(vm::lowestLevel, highest());
    connectEntry();
    arrange();
}

QPushButton *VmDspGain::addButton(const char *name)
{
    auto *button = new QPushButton(this);
    button->setObjectName(QLatin1String(name));
    button->setCheckable(true);
    button->setAutoDefault(false);
    button->hide();
    return button;
}

void VmDspGain::arrange()
{
    m_entry->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
    m_room = new QSpacerItem(0, 0, QSizePolicy::Ignored, QSizePolicy::Expanding);
    auto *rows = new QVBoxLayout(this);
    rows->setContentsMargins(0, 0, 0, 0);
    rows->setSpacing(2);
    rows->addWidget(m_label);
    rows->addSpacerItem(m_room);
    for (QWidget *row : {static_cast<QWidget *>(m_entry), static_cast<QWidget *>(m_button1),
                         static_cast<QWidget *>(m_button2)})
        rows->addWidget(row);
}

void VmDspGain::connectEntry()
{
    const auto take = [this] { pickLevel(m_entry->value()); };
    connect(m_entry, QOverload<double>::of(&QDoubleSpinBox::valueChanged), this, take);
    connect(m_entry, &LevelEntry::typed, this, take);
    connect(m_entry, &LevelEntry::left, this, [this] {
        levelShown();
        setFocus(Qt::OtherFocusReason);
    });
}

QDoubleSpinBox *VmDspGain::numericEntry() const
{
    return m_entry;
}

void VmDspGain::setLabel(const QString &text)
{
    m_label->setText(text);
    setAccessibleName(text);
}

void VmDspGain::setLabelColor(const QColor &color)
{
    m_label->setStyleSheet(QStringLiteral("color: %1;").arg(color.name(QColor::HexArgb)));
}

void VmDspGain::setShowLabel(bool shown)
{
    m_label->setVisible(shown);
    placeParts();
}

void VmDspGain::setShowButton1(bool shown)
{
    m_button1->setVisible(shown);
    placeParts();
}

void VmDspGain::setShowButton2(bool shown)
{
    m_button2->setVisible(shown);
    placeParts();
}

void VmDspGain::setButton1_text(const QString &text)
{
    m_button1->setText(text);
}

void VmDspGain::setButton2_text(const QString &text)
{
    m_button2->setText(text);
}

void VmDspGain::setEndsNumbered(bool numbered)
{
    m_endsNumbered = numbered;
    update();
}

QSize VmDspGain::sizeHint() const
{
    return smallest.expandedTo({0, 240});
}

QSize VmDspGain::minimumSizeHint() const
{
    return smallest;
}

double VmDspGain::shareOf(double dB) const
{
    return vm::travelShare(dB, highest());
}

double VmDspGain::levelAt(double share) const
{
    return vm::levelAtShare(share, highest());
}

/// A number that is being typed stays: the user goes before the device.
void VmDspGain::levelShown()
{
    if (m_entry->isBeingTyped())
        return;
    const QSignalBlocker silent(m_entry);
    m_entry->setValue(m_entry->decimals() == 0 ? vm::wholeLevel(level()) : level());
}

bool VmDspGain::event(QEvent *event)
{
    if (event->type() == QEvent::DynamicPropertyChange
        && static_cast<QDynamicPropertyChangeEvent *>(event)->propertyName() == highestGainProperty)
        readHighestGain();
    const bool handled = LevelControl::event(event);
    if (event->type() == QEvent::LayoutRequest)
        placeParts();
    return handled;
}

void VmDspGain::readHighestGain()
{
    bool isNumber = false;
    const double wanted = property(highestGainProperty).toDouble(&isNumber);
    const double highestGain = isNumber && wanted > vm::lowestLevel ? wanted : vm::highestLevel;
    {
        const QSignalBlocker silent(m_entry);
        m_entry->setMaximum(highestGain);
    }
    m_meter->setHighest(highestGain);
    setHighest(highestGain);
}

void VmDspGain::resizeEvent(QResizeEvent *)
{
    placeParts();
}

void VmDspGain::placeParts()
{
    layout()->activate();
    m_geometry = vm::FaderGeometry(m_room->geometry());
    m_meter->setGeometry(m_geometry.meter());
    m_readout->setGeometry(m_geometry.readout());
    update();
}

void VmDspGain::paintEvent(QPaintEvent *)
{
    vm::FaderState state;
    state.share = shareOf(level());
    state.highest = highest();
    state.endsNumbered = m_endsNumbered;
    state.accent = accentColor();
    state.frame = vm::focusColor(palette());
    state.window = palette().color(QPalette::Active, QPalette::Window);
    state.text = palette().color(QPalette::Active, QPalette::WindowText);
    state.font = font();
    state.pixelRatio = devicePixelRatioF();
    state.enabled = isEnabled();
    state.hovered = underMouse() && isEnabled();
    state.focused = hasFocus();
    QPainter painter(this);
    vm::paintFader(painter, m_geometry, state);
}
