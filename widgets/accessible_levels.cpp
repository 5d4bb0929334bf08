#include "widgets/accessible_levels.h"

#include "widgets/level_control.h"
#include "widgets/level_taper.h"
#include "widgets/vm_dial.h"
#include "widgets/vm_meter.h"

#include <QAccessibleWidget>

namespace {

/// What fader, dial and meter have in common: a value on a scale in dB.
class AccessibleLevel : public QAccessibleWidget, public QAccessibleValueInterface
{
public:
    using QAccessibleWidget::QAccessibleWidget;

    void *interface_cast(QAccessible::InterfaceType type) override
    {
        if (type == QAccessible::ValueInterface)
            return static_cast<QAccessibleValueInterface *>(this);
        return QAccessibleWidget::interface_cast(type);
    }
    QString text(QAccessible::Text kind) const override
    {
        return kind == QAccessible::Value ? vm::levelText(currentValue().toDouble())
                                          : QAccessibleWidget::text(kind);
    }
    QVariant minimumValue() const override { return vm::lowestLevel; }
    QVariant minimumStepSize() const override { return 1.0; }
};

class AccessibleControl : public AccessibleLevel
{
public:
    explicit AccessibleControl(LevelControl *control)
        : AccessibleLevel(control, qobject_cast<VmDial *>(control) ? QAccessible::Dial : QAccessible::Slider)
        , m_control(control)
    {
    }

    QVariant currentValue() const override { return m_control->level(); }
    void setCurrentValue(const QVariant &value) override
    {
        if (m_control->isEnabled())
            m_control->pickLevel(value.toDouble());
    }
    QVariant maximumValue() const override { return m_control->highest(); }

private:
    LevelControl *m_control;
};

class AccessibleMeter : public AccessibleLevel
{
public:
    explicit AccessibleMeter(VMMeter *meter)
        : AccessibleLevel(meter, QAccessible::ProgressBar)
        , m_meter(meter)
    {
    }

    QVariant currentValue() const override { return m_meter->dbValuePort1(); }
    void setCurrentValue(const QVariant &) override { }
    QVariant maximumValue() const override { return m_meter->highest(); }

private:
    VMMeter *m_meter;
};

/// Asked for every object; a class of another library may have one of our names.
QAccessibleInterface *accessibleLevel(const QString &, QObject *object)
{
    if (auto *control = qobject_cast<LevelControl *>(object))
        return new AccessibleControl(control);
    if (auto *meter = qobject_cast<VMMeter *>(object))
        return new AccessibleMeter(meter);
    return nullptr;
}

} // namespace

AccessibleLevels::AccessibleLevels()
{
    QAccessible::installFactory(accessibleLevel);
}

AccessibleLevels::~AccessibleLevels()
{
    QAccessible::removeFactory(accessibleLevel);
}
