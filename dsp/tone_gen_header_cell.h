#pragma once

#include "dsp/change_records.h"
#include "dsp/header_cells.h"

#include <QScopedPointer>
#include <QTimer>

class QSpinBox;

namespace Ui {
class DspToneGenHeader;
}

/// The heading of the tone generator's row, with the generator's own controls. Enable takes effect at once,
/// frequency and level when they have rested for a while.
class ToneGenHeaderCell : public MixerHeaderCell
{
    Q_OBJECT

public:
    explicit ToneGenHeaderCell(QWidget *parent = nullptr);
    ~ToneGenHeaderCell() override;

    /// How long frequency and level must rest before they are reported, in ms; 500 unless set.
    void setRestTime(int ms) { m_restTimeMs = ms; }

signals:
    /// The user changed something: 100 enable (bool), 101 frequency (int, Hz), 102 level (int, dB).
    void uiChanged(QPair<int, QVariant> record);

public slots:
    /// Shows a tone record. Emits nothing.
    void onChanged(const QPair<int, QVariant> &record);
    void onUiChanged(const QPair<int, QVariant> &record);
    /// Reports at once what has not rested long enough yet: the controls are about to go.
    void reportPending();

private slots:
    void on_tone_gen_en_checkBox_clicked(bool checked);
    void on_tone_gen_freq_spinBox_valueChanged(int arg1);
    void on_tone_gen_level_spinBox_valueChanged(int arg1);
    void onFreqTimeout();
    void onLevelTimeout();

private:
    void watch(const QSpinBox *box, QTimer *timer, const int &known);
    void report(int parameter, QSpinBox *box, QTimer *timer);

    QScopedPointer<Ui::DspToneGenHeader> m_ui;
    QTimer m_freqTimer;
    QTimer m_levelTimer;
    int m_frequency = 0; ///< Hz, as last shown or reported
    int m_level = 0; ///< dB, as last shown or reported
    int m_restTimeMs = 500;
};
