#include "widgets/wheel_guard.h"

#include <QAbstractSpinBox>
#include <QComboBox>
#include <QEvent>

namespace {

class WheelGuard : public QObject
{
public:
    using QObject::QObject;

    void watch(QWidget *field)
    {
        // Of itself the wheel would give it the focus first.
        if (field->focusPolicy() == Qt::WheelFocus)
            field->setFocusPolicy(Qt::StrongFocus);
        field->installEventFilter(this);
    }

    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() != QEvent::Wheel || static_cast<QWidget *>(watched)->hasFocus())
            return false;
        event->ignore();
        return true;
    }
};

} // namespace

void vm::wheelNeedsFocus(QWidget *area)
{
    auto *guard = new WheelGuard(area);
    for (QComboBox *list : area->findChildren<QComboBox *>())
        guard->watch(list);
    for (QAbstractSpinBox *field : area->findChildren<QAbstractSpinBox *>())
        guard->watch(field);
}
