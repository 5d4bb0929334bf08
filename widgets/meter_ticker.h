#pragma once

#include <QElapsedTimer>
#include <QObject>
#include <QTimer>
#include <QVector>

namespace vm {

/// Something that moves with time while it has to.
class Animated
{
public:
    /// Moves on; false when there is nothing left to move.
    virtual bool advanceTo(qint64 now) = 0;

protected:
    ~Animated() = default;
};

/// The one clock and timer of all meters. The timer runs only while a meter has something to animate.
class MeterTicker : public QObject
{
    Q_OBJECT

public:
    static constexpr int interval = 40; ///< ms

    MeterTicker();

    /// Milliseconds on a clock that never runs backwards.
    qint64 now() const { return m_clock.elapsed(); }
    bool isRunning() const { return m_timer.isActive(); }

    /// Calls advanceTo() every interval until it returns false or remove() is called. Not owned.
    void add(Animated *meter);
    void remove(Animated *meter);

private:
    void tick();

    QElapsedTimer m_clock;
    QTimer m_timer;
    QVector<Animated *> m_moving;
};

} // namespace vm
