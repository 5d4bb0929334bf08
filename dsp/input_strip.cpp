#include "dsp/input_strip.h"

#include "ui_dsp_input_strip.h"

InputStrip::InputStrip(QWidget *parent)
    : ChannelStrip(parent)
    , m_ui(new Ui::DspInputStrip)
{
    m_ui->setupUi(this);
    adopt({m_ui->strip_label, m_ui->label, m_ui->label_2, m_ui->digital_mute_pushButton, m_ui->vmdspgain});
    for (QPushButton *button : {m_ui->digital_mute_pushButton, m_ui->digital_invert_pushButton}) {
        button->setDefault(false);
        button->setAutoDefault(false);
    }
    m_ui->digital_invert_pushButton->hide();
}

InputStrip::~InputStrip() = default;

void InputStrip::on_digital_mute_pushButton_clicked(bool checked)
{
    onUiChanged({InputMute, checked});
}

void InputStrip::on_digital_invert_pushButton_clicked(bool checked)
{
    onUiChanged({InputInvert, checked});
}

void InputStrip::on_vmdspgain_parametersChanged()
{
    onUiChanged({InputGain, gain()});
}

void InputStrip::showValue(int parameter, const QVariant &value)
{
    switch (parameter) {
    case InputMute:
        showChecked(m_ui->digital_mute_pushButton, value);
        break;
    case InputInvert:
        showChecked(m_ui->digital_invert_pushButton, value);
        break;
    case InputGain:
        showGain(value);
        break;
    }
}
