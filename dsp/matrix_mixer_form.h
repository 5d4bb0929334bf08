#pragma once

#include "dsp/block_editor.h"
#include "dsp/change_records.h"
#include "dsp/mixer_section.h"

#include <QJsonObject>
#include <QScopedPointer>
#include <QStringList>

#include <array>

namespace Ui {
class DspMatrixMixer;
}

/// The block editor of the matrix mixer: a dial for each pair of source (row) and sink (column), and the
/// tone generator's controls in the heading of the last row.
///
/// Shows the crosspoints of the mixer's section (see dsp/mixer_section.h), which outlives the editor. It
/// reads the section again at every reload and never writes it.
class MatrixMixerForm : public BlockEditor
{
    Q_OBJECT

public:
    /// A "|" in a sink's label is a line break. The last source is the tone generator.
    MatrixMixerForm(const QStringList &sources, const QStringList &sinks, const QJsonObject *section,
                    QWidget *parent = nullptr);
    ~MatrixMixerForm() override;

    /// How long after Clear the dials follow the section, in ms; 1000 unless set.
    void setReloadDelay(int ms) { m_reloadDelayMs = ms; }

signals:
    /// One crosspoint as the section has it, for the cells.
    void DevChanged(QPair<QPair<int, int>, QPair<int, QVariant>> record);
    /// The user changed a crosspoint.
    void uiMixChanged(QPair<QPair<int, int>, QPair<int, QVariant>> record);
    /// The user changed the tone generator.
    void uiTonGenChanged(QPair<int, QVariant> record);
    /// A value of the tone generator as the device has it, for its header.
    void DevToneGenChanged(QPair<int, QVariant> record);

public slots:
    /// Shows missing crosspoints as 0 dB.
    void onDataChanged() override;
    void onUiChanged(const QPair<QPair<int, int>, QPair<int, QVariant>> &record);
    void onToneGenChanged(const QPair<int, QVariant> &record);
    void onUiToneGenChanged(const QPair<int, QVariant> &record);
    /// Reports -100 dB for every crosspoint and shows the section again a little later.
    void onUiReset();
    /// The same with the default levels.
    void onUiDefault();
    /// Concerns the row of the second Bluetooth input and the column of the Bluetooth output, whatever the
    /// channel.
    void onUsbMode(int ch, int type) override;

private:
    /// Levels in dB, [source][sink].
    using Levels = std::array<std::array<int, mixerSinks>, mixerSources>;

    void buildGrid();
    void lightRowAndColumn(int row, int column);
    QWidget *newWidgetAt(int row, int column);
    QWidget *newCorner();
    QWidget *newColumnHeader(int sink);
    QWidget *newRowHeader(int source);
    QWidget *newToneGenHeader();
    QWidget *newCell(int source, int sink);
    void setUnavailableByUsbMode(bool unavailable);
    void disableUnavailableCells();
    void reportAll(const Levels &levels);

    QStringList m_sources;
    QStringList m_sinks;
    const QJsonObject *m_section;
    QScopedPointer<Ui::DspMatrixMixer> m_ui;
    Levels m_defaults;
    int m_reloadDelayMs = 1000;
};
