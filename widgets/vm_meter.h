#pragma once

#include "widgets/meter_ballistics.h"
#include "widgets/meter_face.h"
#include "widgets/meter_ticker.h"

#include <QSharedPointer>
#include <QWidget>

#include <limits>

class AccessibleLevels;

/// A level meter from -100 to +20 dB on the fader's IEC-style scale: instant attack, falling 11.8 dB a
/// second, a peak line held for 1.5 s and a clip mark that stays until the meter is clicked. Green below -20
/// dB, yellow below -9 dB, red above.
class VMMeter : public QWidget, private vm::Animated
{
    Q_OBJECT
    /// dB. What was set last, not the falling bar.
    Q_PROPERTY(double dbValuePort1 READ dbValuePort1 WRITE setDbValuePort1)

public:
    explicit VMMeter(QWidget *parent = nullptr);
    ~VMMeter() override;

    /// Shows a level in dB. Levels outside the scale are drawn at its ends; not a number is ignored. The
    /// meter empties when no level has been set for half a second.
    void setDbValuePort1(double dB);
    double dbValuePort1() const { return m_value; }

    /// dB at the top of the scale.
    double highest() const { return m_highest; }
    void setHighest(double dB);

    /// dB, the loudest level shown since it was last cleared; vm::lowestLevel when there was none. The clip
    /// mark is on from 0 dB on.
    double maximum() const { return m_ballistics.maximum(); }
    bool isClipped() const { return m_ballistics.isClipped(); }
    void clearMaximum();

    /// The part of the meter in which the bar moves; the clip mark is above it.
    QRect travelRect() const { return vm::MeterFace::travel(size()); }

    QSize sizeHint() const override { return {12, 200}; }
    QSize minimumSizeHint() const override { return {6, 40}; }

signals:
    void maximumChanged();

protected:
    void paintEvent(QPaintEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void showEvent(QShowEvent *event) override;
    void hideEvent(QHideEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    static constexpr double nothingArrived = -std::numeric_limits<double>::infinity();

    bool advanceTo(qint64 now) override;
    void takeLevels();
    vm::MeterFace::Reading reading() const;
    void refresh();
    void animate();

    QSharedPointer<AccessibleLevels> m_accessible;
    QSharedPointer<vm::MeterTicker> m_ticker;
    bool m_animated = false; ///< in the ticker's list
    double m_loudest = nothingArrived; ///< dB, since the last look
    vm::MeterBallistics m_ballistics;
    vm::MeterFace m_face;
    vm::MeterFace::Reading m_shown;
    double m_value = vm::lowestLevel;
    double m_highest = vm::highestLevel;
};
