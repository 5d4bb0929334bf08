#pragma once

#include "dsp/matrix_mixer_cell.h"
#include "dsp/matrix_mixer_form.h"
#include "dsp/tone_gen_header_cell.h"
#include "widgets/vm_dial.h"

#include <QCheckBox>
#include <QJsonArray>
#include <QSpinBox>
#include <QTableWidget>

/// A mixer with the device's own sources and sinks over a section of its own, looked at by its widgets.
class MixerProbe
{
public:
    explicit MixerProbe(const QJsonObject &startSection = {})
        : section(startSection)
        , form(sources(), sinks(), &section)
        , table(*form.findChild<QTableWidget *>(QStringLiteral("tableWidget")))
    {
        QObject::connect(&form, &MatrixMixerForm::uiMixChanged, &form,
                         [this](const CrosspointRecord &record) { changes.append(record); });
        QObject::connect(&form, &MatrixMixerForm::uiTonGenChanged, &form,
                         [this](const ToneRecord &record) { toneChanges.append(record); });
    }

    static QStringList sources()
    {
        return QStringLiteral(
                   "Net RX 1,Net RX 2,Net RX 3,Net RX 4,USB IN 1,USB IN 2,BT IN 1,BT IN 2,Voice Cue,"
                   "Tone Gen")
            .split(QLatin1Char(','));
    }
    static QStringList sinks()
    {
        return QStringLiteral("Net|TX 1,Net|TX 2,Net|TX 3,Net|TX 4,USB|OUT 1,USB|OUT 2,BT|OUT 1")
            .split(QLatin1Char(','));
    }

    MatrixMixerCell &cell(int source, int sink) const
    {
        return *qobject_cast<MatrixMixerCell *>(table.cellWidget(source + 1, sink + 1));
    }
    VmDial &dial(int source, int sink) const
    {
        return *cell(source, sink).findChild<VmDial *>(QStringLiteral("vmdial"));
    }
    ToneGenHeaderCell &tone() const { return *qobject_cast<ToneGenHeaderCell *>(table.cellWidget(10, 0)); }
    QCheckBox &toneEnable() const
    {
        return *form.findChild<QCheckBox *>(QStringLiteral("tone_gen_en_checkBox"));
    }
    QSpinBox &toneFrequency() const
    {
        return *form.findChild<QSpinBox *>(QStringLiteral("tone_gen_freq_spinBox"));
    }
    QSpinBox &toneLevel() const
    {
        return *form.findChild<QSpinBox *>(QStringLiteral("tone_gen_level_spinBox"));
    }

    /// How many of the 70 dials show @p dB.
    int dialsAt(double dB) const
    {
        int count = 0;
        for (const VmDial *each : form.findChildren<VmDial *>())
            count += each->Val() == dB ? 1 : 0;
        return count;
    }

    QJsonObject section;
    MatrixMixerForm form;
    QTableWidget &table;
    QVector<CrosspointRecord> changes;
    QVector<ToneRecord> toneChanges;
};

/// A section in which crosspoint (source, sink) is -(10 * sink + source) dB.
inline QJsonObject mixerSection()
{
    QJsonArray value;
    for (int sink = 0; sink < 7; ++sink) {
        QJsonArray levels;
        for (int source = 0; source < 10; ++source)
            levels.append(-(10 * sink + source));
        value.append(levels);
    }
    return {{QStringLiteral("value"), value}};
}
