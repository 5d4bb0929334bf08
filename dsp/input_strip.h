#pragma once

#include "dsp/channel_strip.h"

#include <QScopedPointer>

namespace Ui {
class DspInputStrip;
}

/// A strip of an input block: beside gain and mute it holds the phase inversion, which is not offered to
/// the user.
class InputStrip : public ChannelStrip
{
    Q_OBJECT

public:
    explicit InputStrip(QWidget *parent = nullptr);
    ~InputStrip() override;

private slots:
    void on_digital_mute_pushButton_clicked(bool checked);
    void on_digital_invert_pushButton_clicked(bool checked);
    void on_vmdspgain_parametersChanged();

private:
    void showValue(int parameter, const QVariant &value) override;

    QScopedPointer<Ui::DspInputStrip> m_ui;
};
