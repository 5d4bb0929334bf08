#pragma once

#include "dsp/change_records.h"

#include <QColor>
#include <QWidget>

class QAbstractButton;
class QLabel;
class VmDspGain;

/// One channel of a strip editor: a gain fader with its level meter and a mute button, 92 x 324 pixels.
/// Showing a value is silent; what the user changes comes out as strip records. A bar in the colour of the
/// kind of port runs along its top and is red while the channel is muted.
class ChannelStrip : public QWidget
{
    Q_OBJECT

public:
    explicit ChannelStrip(QWidget *parent = nullptr);

    void setLabel(const QString &text);
    void setColor(const QColor &color);

signals:
    /// The user changed something.
    void uiChanged(QPair<int, QVariant> record);

public slots:
    void onEnable(bool enabled);
    /// Shows a record without emitting anything. Unknown parameter numbers change nothing.
    void onChanged(const QPair<int, QVariant> &record);
    void onUiChanged(const QPair<int, QVariant> &record);
    /// Moves the meter to a level in dB, unless the strip is disabled.
    void onLevelChange(int val);

protected:
    /// The widgets that the form of every strip has, owned by the strip.
    struct Parts
    {
        QLabel *label = nullptr;
        QLabel *scaleTop = nullptr;
        QLabel *scaleBottom = nullptr;
        QAbstractButton *mute = nullptr;
        VmDspGain *fader = nullptr;
    };

    /// To be called once the form is set up.
    void adopt(const Parts &parts);

    static void showChecked(QAbstractButton *button, const QVariant &value);
    void showGain(const QVariant &value);
    double gain() const;

    void paintEvent(QPaintEvent *event) override;
    void showEvent(QShowEvent *event) override;

private:
    void alignScale();
    virtual void showValue(int parameter, const QVariant &value) = 0;

    Parts m_parts;
    QColor m_color;
};
