#include "dsp/tone_gen_header_cell.h"

#include "ui_dsp_tone_gen_header.h"
#include "widgets/wheel_guard.h"

#include <QLineEdit>
#include <QSignalBlocker>

namespace {

void showNumber(QSpinBox *box, int value)
{
    const QSignalBlocker silent(box);
    box->setValue(value);
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
    watch(m_ui->tone_gen_freq_spinBox, &m_freqTimer, m_frequency);
    watch(m_ui->tone_gen_level_spinBox, &m_levelTimer, m_level);
}

ToneGenHeaderCell::~ToneGenHeaderCell() = default;

/// A number rests from the last key on, not only from Enter on. One that is refused leaves what was there
/// before: nothing new, or the result of a step that has not been reported yet.
void ToneGenHeaderCell::watch(const QSpinBox *box, QTimer *timer, const int &known)
{
    const auto wait = [this, box, timer, &known] {
        if (box->value() != known || box->hasAcceptableInput())
            timer->start(m_restTimeMs);
        else
            timer->stop();
    };
    connect(box->findChild<QLineEdit *>(), &QLineEdit::textEdited, timer, wait);
    connect(box, &QSpinBox::editingFinished, timer, [box, wait, &known] {
        if (box->value() != known)
            wait();
    });
}

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
        m_frequency = record.second.toInt();
        showNumber(m_ui->tone_gen_freq_spinBox, m_frequency);
        break;
    case ToneLevel:
        m_level = record.second.toInt();
        showNumber(m_ui->tone_gen_level_spinBox, m_level);
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
    report(ToneFrequency, m_ui->tone_gen_freq_spinBox, &m_freqTimer);
}

void ToneGenHeaderCell::onLevelTimeout()
{
    report(ToneLevel, m_ui->tone_gen_level_spinBox, &m_levelTimer);
}

void ToneGenHeaderCell::report(int parameter, QSpinBox *box, QTimer *timer)
{
    timer->stop();
    if (!box->hasAcceptableInput())
        return; // until it is finished
    box->interpretText();
    timer->stop(); // a new value has started it anew
    onUiChanged({parameter, box->value()});
}
