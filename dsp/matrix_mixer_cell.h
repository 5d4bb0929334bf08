#pragma once

#include "dsp/change_records.h"

#include <QWidget>

class VmDial;

/// One crosspoint of the mixer: the dial that sets how loud a source is in a sink.
class MatrixMixerCell : public QWidget
{
    Q_OBJECT

public:
    MatrixMixerCell(int source, int sink, QWidget *parent = nullptr);

    /// Reasons why the crosspoint is not available, one bit each. Bit 0: the USB mode. The owner disables
    /// the cell while any is set.
    static constexpr quint8 unavailableByUsbMode = 0x01;
    quint8 unavailableFlags() const { return m_unavailable; }
    void setUnavailableFlags(quint8 flags) { m_unavailable = flags; }

    /// Says in words which crosspoint this is. Tool tip and screen reader add the level to it.
    void setDescription(const QString &text);

    /// A cell in the row and column of the crosspoint that the user is at stands out a little.
    void setLit(bool lit);

    int source() const { return m_source; }
    int sink() const { return m_sink; }

signals:
    /// The user turned the dial; the value is a double in dB.
    void uiChanged(QPair<QPair<int, int>, QPair<int, QVariant>> record);

public slots:
    /// Shows a level if it is this cell's. Emits nothing. Called for every crosspoint of a reload.
    void onChanged(const QPair<QPair<int, int>, QPair<int, QVariant>> &record);
    void onUiChanged(const QPair<QPair<int, int>, QPair<int, QVariant>> &record);

protected:
    void paintEvent(QPaintEvent *event) override;

private slots:
    void on_vmdial_parametersChanged();

private:
    void describe();

    int m_source;
    int m_sink;
    quint8 m_unavailable = 0;
    bool m_lit = false;
    QString m_description;
    VmDial *m_dial;
};
