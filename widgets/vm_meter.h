#pragma once

#include <QWidget>

/// A level meter from -100 to +20 dB on the fader's IEC-style scale: instant attack, falling 11.8 dB a
/// second, a peak line held for 1.5 s and a clip mark that stays until it is clicked.
class VMMeter : public QWidget
{
    Q_OBJECT
    /// dB. What was set last, not the falling bar.
    Q_PROPERTY(double dbValuePort1 READ dbValuePort1 WRITE setDbValuePort1)

public:
    explicit VMMeter(QWidget *parent = nullptr);

    /// Shows a level in dB. Levels outside the scale are drawn at its ends. The meter empties when no level
    /// has been set for half a second.
    void setDbValuePort1(double dB);
    double dbValuePort1() const { return m_value; }

private:
    double m_value = -100.0;
};
