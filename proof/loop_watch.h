#pragma once

#include <QElapsedTimer>
#include <QFile>
#include <QObject>
#include <QTimer>
#include <QVector>

namespace proof {

/// Measures how late the event loop gets to what is due, in the loops of boxes and dialogs as well. What the
/// system gave to other programs meanwhile does not count. Ends the program when the loop stands still for a
/// minute, after a line on the standard error stream.
class LoopWatch : public QObject
{
public:
    explicit LoopWatch(QObject *parent = nullptr);
    ~LoopWatch() override;

    /// In ms, since the start or the last forget(). @p share is 0 to 1.
    double percentile(double share) const;
    double worst() const { return percentile(1); }
    void forget() { m_delays.clear(); }

private:
    void beat();
    qint64 waitedForProcessor();

    QTimer m_timer;
    QElapsedTimer m_sinceBeat;
    QFile m_schedule;
    qint64 m_waited = 0; ///< ns
    QVector<float> m_delays;
};

} // namespace proof
