#pragma once

#include "dsp/channel_strip.h"

#include <QScopedPointer>

namespace Ui {
class DspOutputStrip;
}

/// A strip of an output block: beside gain and mute it holds a limiter, which is not offered to the user.
class OutputStrip : public ChannelStrip
{
    Q_OBJECT

public:
    explicit OutputStrip(QWidget *parent = nullptr);
    ~OutputStrip() override;

    /// Makes each key and wheel step of the threshold take effect at once.
    bool eventFilter(QObject *watched, QEvent *event) override;

private slots:
    void on_digital_mute_pushButton_clicked(bool checked);
    void on_vmdspgain_parametersChanged();
    void on_limiter_en_checkBox_clicked(bool checked);
    void on_limiter_thresh_spinBox_editingFinished();

private:
    void showValue(int parameter, const QVariant &value) override;
    void showThreshold(int value);

    QScopedPointer<Ui::DspOutputStrip> m_ui;
};
