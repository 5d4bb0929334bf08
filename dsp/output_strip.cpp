#include "dsp/output_strip.h"

#include "ui_dsp_output_strip.h"

#include <QKeyEvent>
#include <QSignalBlocker>
#include <QWheelEvent>

namespace {

/// The direction in which an event steps a value, +1 or -1; 0 when it is no step.
int stepDirection(const QEvent &event)
{
    if (event.type() == QEvent::Wheel)
        return static_cast<const QWheelEvent &>(event).angleDelta().y() > 0 ? 1 : -1;
    if (event.type() != QEvent::KeyPress)
        return 0;
    switch (static_cast<const QKeyEvent &>(event).key()) {
    case Qt::Key_Up:
    case Qt::Key_PageUp:
        return 1;
    case Qt::Key_Down:
    case Qt::Key_PageDown:
        return -1;
    default:
        return 0;
    }
}

} // namespace

OutputStrip::OutputStrip(QWidget *parent)
    : ChannelStrip(parent)
    , m_ui(new Ui::DspOutputStrip)
{
    m_ui->setupUi(this);
    adopt({m_ui->strip_label, m_ui->label, m_ui->label_2, m_ui->digital_mute_pushButton, m_ui->vmdspgain});
    m_ui->digital_mute_pushButton->setDefault(false);
    m_ui->digital_mute_pushButton->setAutoDefault(false);
    m_ui->limiter_widget->hide();
    m_ui->limiter_thresh_spinBox->installEventFilter(this);
}

OutputStrip::~OutputStrip() = default;

bool OutputStrip::eventFilter(QObject *watched, QEvent *event)
{
    const int direction = watched == m_ui->limiter_thresh_spinBox ? stepDirection(*event) : 0;
    if (direction == 0)
        return ChannelStrip::eventFilter(watched, event);

    const QSpinBox *box = m_ui->limiter_thresh_spinBox;
    showThreshold(box->value() + direction * box->singleStep());
    on_limiter_thresh_spinBox_editingFinished();
    event->accept(); // or a wheel step would go on to the parent
    return true;
}

void OutputStrip::on_digital_mute_pushButton_clicked(bool checked)
{
    onUiChanged({OutputMute, checked});
}

void OutputStrip::on_vmdspgain_parametersChanged()
{
    onUiChanged({OutputGain, gain()});
}

void OutputStrip::on_limiter_en_checkBox_clicked(bool checked)
{
    onUiChanged({OutputLimiterEnable, checked});
}

void OutputStrip::on_limiter_thresh_spinBox_editingFinished()
{
    onUiChanged({OutputLimiterThreshold, m_ui->limiter_thresh_spinBox->value()});
}

void OutputStrip::showValue(int parameter, const QVariant &value)
{
    switch (parameter) {
    case OutputMute:
        showChecked(m_ui->digital_mute_pushButton, value);
        break;
    case OutputGain:
        showGain(value);
        break;
    case OutputLimiterEnable:
        showChecked(m_ui->limiter_en_checkBox, value);
        break;
    case OutputLimiterThreshold:
        showThreshold(value.toInt());
        break;
    }
}

void OutputStrip::showThreshold(int value)
{
    const QSignalBlocker silent(m_ui->limiter_thresh_spinBox);
    m_ui->limiter_thresh_spinBox->setValue(value);
}
