#pragma once

#include <QObject>

/// How far the update of one device has come.
class UpdateDev : public QObject
{
    Q_OBJECT

public:
    /// In this state the list shows the device's name in red.
    static constexpr int Alarm = 2;

    using QObject::QObject;

    int state() const { return m_state; }
    void setState(int state) { m_state = state; }

    /// Per cent.
    int progress() const { return m_progress; }
    void setProgress(int percent) { m_progress = percent; }

private:
    int m_state = 0;
    int m_progress = 0;
};
