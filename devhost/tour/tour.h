#pragma once

#include "devhost/tour/step.h"

#include <QDir>
#include <QElapsedTimer>
#include <QObject>
#include <QTextStream>
#include <QTimer>

namespace devhost::tour {

/// Walks through the steps: acts, waits until the step is confirmed, takes its picture, prints one line.
/// The first step that fails ends the tour. Steps go on inside the event loops of dialogs they opened.
class Tour : public QObject
{
    Q_OBJECT

public:
    /// Pictures go into @p folder as "NN name.png", lines to @p out; neither is owned.
    Tour(const Steps &steps, const QString &folder, QTextStream *out, QObject *parent = nullptr);

    void start();

signals:
    /// Every step was confirmed and pictured, or one of them was not.
    void finished(bool success);

private:
    enum class Phase { Acting, Waiting, Painting };

    void begin();
    void act(int number);
    void poll();
    void confirm();
    void photograph();
    void goOn();
    void end(const QString &failure);
    void print(const QString &outcome);

    Steps m_steps;
    QDir m_folder;
    QTextStream *m_out;
    QTimer m_poll;
    QElapsedTimer m_clock;
    int m_current = 0;
    int m_pictures = 0;
    Phase m_phase = Phase::Acting;
};

} // namespace devhost::tour
