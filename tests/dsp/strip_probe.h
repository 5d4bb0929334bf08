#pragma once

#include "dsp/channel_strip.h"
#include "dsp/strip_editors.h"
#include "widgets/vm_dsp_gain.h"
#include "widgets/vm_meter.h"

#include <QCheckBox>
#include <QJsonArray>
#include <QPushButton>
#include <QSpinBox>

/// Finds a child that has to be there.
template <typename Widget>
Widget &child(const QObject &parent, const char *name)
{
    auto *widget = parent.findChild<Widget *>(QLatin1String(name));
    if (!widget)
        qFatal("no child \"%s\"", name);
    return *widget;
}

/// Looks at the strip of one channel as a user would: by the widgets on it.
struct StripProbe
{
    StripProbe(const StripEditor &editor, int channel)
        : strip(*editor.findChildren<ChannelStrip *>().at(channel))
        , fader(child<VmDspGain>(strip, "vmdspgain"))
        , mute(child<QPushButton>(strip, "digital_mute_pushButton"))
    {
    }

    double level() const { return fader.getMeter()->dbValuePort1(); }
    /// Mute and gain, and inversion or limiter and threshold.
    QVariantList shown() const
    {
        QVariantList values{mute.isChecked(), fader.Gain()};
        if (auto *invert = strip.findChild<QPushButton *>(QStringLiteral("digital_invert_pushButton")))
            return values << invert->isChecked();
        return values << child<QCheckBox>(strip, "limiter_en_checkBox").isChecked()
                      << child<QSpinBox>(strip, "limiter_thresh_spinBox").value();
    }

    ChannelStrip &strip;
    VmDspGain &fader;
    QPushButton &mute;
};

/// A section with one object a channel; muted and inverted are the odd ones, gains are -1, -11, -21 ... dB.
inline QJsonObject sectionOf(int channels)
{
    QJsonArray value;
    for (int channel = 0; channel < channels; ++channel) {
        const bool odd = channel % 2 == 1;
        const QJsonObject limiter{{QStringLiteral("enable"), odd},
                                  {QStringLiteral("threshold"), -30 - channel}};
        value.append(QJsonObject{{QStringLiteral("mute"), odd},
                                 {QStringLiteral("invert"), odd},
                                 {QStringLiteral("gain"), -1 - 10 * channel},
                                 {QStringLiteral("limiter"), limiter}});
    }
    return {{QStringLiteral("value"), value}};
}
