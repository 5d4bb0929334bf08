#pragma once

#include "dsp/block_editor.h"
#include "dsp/change_records.h"
#include "dsp/strip_variant.h"

#include <QJsonObject>
#include <QScopedPointer>
#include <QVector>

class ChannelStrip;

namespace Ui {
class DspStripEditor;
}

/// A block editor with one channel strip a channel. Shows the channels of a section, which it reads again at
/// every reload and never writes, and reports what the user changes. Channel indices that name no strip are
/// ignored everywhere.
class StripEditor : public BlockEditor
{
    Q_OBJECT

public:
    ~StripEditor() override;

signals:
    /// The user changed something: (channel index, (parameter number, value)).
    void uiChanged(QPair<int, QPair<int, QVariant>> record);

public slots:
    void onSetStripLabel(uchar channel, const QString &text);
    void onEnableStrip(uchar channel, bool enabled);
    /// Leaves disabled strips as they are.
    void onDataChanged() override;
    /// Shows a channel record. Emits nothing.
    void onChanged(const QPair<int, QPair<int, QVariant>> &record);
    /// Reports a strip's own change; nothing when the sender is not one of the editor's strips.
    void onUiChanged(const QPair<int, QVariant> &record);
    /// Meters whose byte is missing stay as they are.
    void onLevels(const QByteArray &bytes) override;

protected:
    using StripFactory = ChannelStrip *(*)(QWidget *parent);

    /// Makes the strip class of a block.
    template <typename Strip>
    static ChannelStrip *newStrip(QWidget *parent)
    {
        return new Strip(parent);
    }

    StripEditor(const StripVariant &variant, StripFactory makeStrip, uchar channels,
                const QJsonObject *section, QWidget *parent);

    /// @p type 0 takes a channel away, 1 gives it back, anything else is ignored. Only the low eight bits of
    /// @p ch count.
    void setChannelAvailability(int ch, int type);
    /// Adds a widget below the strips. The editor takes it over.
    void addBelowStrips(QWidget *widget);

private:
    void addStrip(ChannelStrip *strip);
    ChannelStrip *strip(int channel) const { return m_strips.value(channel, nullptr); }
    void showRecords(int channel, const QVector<StripRecord> &records);

    const StripVariant &m_variant;
    const QJsonObject *m_section;
    QScopedPointer<Ui::DspStripEditor> m_ui;
    QVector<ChannelStrip *> m_strips;
};
