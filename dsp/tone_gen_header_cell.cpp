#include "dsp/tone_gen_header_cell.h"

#include "ui_dsp_tone_gen_header.h"
#include "widgets/wheel_guard.h"

#include <QSignalBlocker>

namespace {

void showNumber(QSpinBox *box, const QVariant &value)
{
    const QSignalBlocker silent(box);
    box->setValue(value.toInt());
}

} // namespace

ToneGenHeaderCell::ToneGenHeaderCell(QWidget *parent)
    : MixerHeaderCell(parent)
    , m_ui(new Ui::DspToneGenHeader)
{
    m_ui->setupUi(this);
    vm::wheelNeedsFocus(this);
    connect(&m_freqTimer, &QTimer::timeout, this, &ToneGenHeaderCell::onFreqTimeout);
    connect(&m_levelTimer, &QTimer::timeout, this, &ToneGenHeaderCell::onLevelTimeout);
}

ToneGenHeaderCell::~ToneGenHeaderCell() = default;

void ToneGenHeaderCell::onChanged(const QPair<int, QVariant> &record)
{
    const QSignalBlocker silent(this);
    switch (record.first) {
    case ToneEnable: {
        const QSignalBlocker boxSilent(m_ui->tone_gen_en_checkBox);
        m_ui->tone_gen_en_checkBox->setChecked(record.second.toBool());
        break;
    }
    case ToneFrequency:
        showNumber(m_ui->tone_gen_freq_spinBox, record.second);
        break;
    case ToneLevel:
        showNumber(m_ui->tone_gen_level_spinBox, record.second);
        break;
    }
}

void ToneGenHeaderCell::onUiChanged(const QPair<int, QVariant> &record)
{
    onChanged(record);
    emit uiChanged(record);
}

void ToneGenHeaderCell::on_tone_gen_en_checkBox_clicked(bool checked)
{
    onUiChanged({ToneEnable, checked});
}

void ToneGenHeaderCell::on_tone_gen_freq_spinBox_valueChanged(int arg1)
{
    Q_UNUSED(arg1)
    m_freqTimer.start(m_restTimeMs);
}

void ToneGenHeaderCell::on_tone_gen_level_spinBox_valueChanged(int arg1)
{
    Q_UNUSED(arg1)
    m_levelTimer.start(m_restTimeMs);
}

void ToneGenHeaderCell::reportPending()
{
    if (m_freqTimer.isActive())
        onFreqTimeout();
    if (m_levelTimer.isActive())
        onLevelTimeout();
}

void ToneGenHeaderCell::onFreqTimeout()
{
    m_freqTimer.stop();
    onUiChanged({ToneFrequency, m_ui->tone_gen_freq_spinBox->value()});
}

void ToneGenHeaderCell::onLevelTimeout()
{
    m_levelTimer.stop();
    onUiChanged({ToneLevel, m_ui->tone_gen_level_spinBox->value()});
}
