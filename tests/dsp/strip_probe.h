#pragma once

#include "dsp/channel_strip.h"
#include "dsp/strip_editor.h"
#include "widgets/vm_dsp_gain.h"
#include "widgets/vm_meter.h"

#include <QCheckBox>
#include <QLabel>
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
class StripProbe
{
public:
    StripProbe(const StripEditor &editor, int channel)
        : m_strip(*editor.findChildren<ChannelStrip *>().at(channel))
    {
    }

    ChannelStrip &strip() const { return m_strip; }
    VmDspGain &fader() const { return child<VmDspGain>(m_strip, "vmdspgain"); }
    QPushButton &mute() const { return child<QPushButton>(m_strip, "digital_mute_pushButton"); }
    QPushButton &invert() const { return child<QPushButton>(m_strip, "digital_invert_pushButton"); }
    QCheckBox &limiter() const { return child<QCheckBox>(m_strip, "limiter_en_checkBox"); }
    QSpinBox &threshold() const { return child<QSpinBox>(m_strip, "limiter_thresh_spinBox"); }
    QString label() const { return child<QLabel>(m_strip, "strip_label").text(); }
    double level() const { return fader().getMeter()->dbValuePort1(); }

    /// What the strip shows, limiter or inversion included.
    QVariantList shown(bool input) const
    {
        QVariantList values{mute().isChecked(), fader().Gain()};
        if (input)
            values << invert().isChecked();
        else
            values << limiter().isChecked() << threshold().value();
        return values;
    }

private:
    ChannelStrip &m_strip;
};

/// Keeps everything that an editor reports.
class EditorRecords
{
public:
    explicit EditorRecords(const StripEditor &editor)
    {
        QObject::connect(&editor, &StripEditor::uiChanged, &editor,
                         [this](const ChannelRecord &record) { m_records.append(record); });
    }

    const QVector<ChannelRecord> &all() const { return m_records; }
    QVector<ChannelRecord> take()
    {
        QVector<ChannelRecord> taken;
        taken.swap(m_records);
        return taken;
    }

private:
    QVector<ChannelRecord> m_records;
};
