#pragma once

#include <QObject>
#include <QPointer>
#include <QRandomGenerator>
#include <QStringList>

class QAbstractButton;
class QComboBox;
class QWidget;

namespace proof {

class Station;

/// Uses a station's windows as a person would who tries everything, in an order that follows from a seed: one
/// act at a time, in whatever box or dialog is open, else in one of the windows. Some acts are those of a
/// host: snapshots, presets, opening and closing.
class RandomUser : public QObject
{
    Q_OBJECT

public:
    /// @p ownCue is the file that the user chooses where a recording is asked for.
    RandomUser(Station *station, quint32 seed, const QString &ownCue);

    /// How many of a hundred acts at a control that reboots, resets, closes or uploads are done.
    void setRecklessness(int percent) { m_recklessness = percent; }
    /// Begins, with @p pauseMs between two acts.
    void start(int pauseMs);
    void stop() { m_running = false; }
    int acts() const { return m_acts; }
    /// The last things done, the newest last.
    const QStringList &trace() const { return m_trace; }
    /// A Bluetooth name typed since the editor was opened; null when none was.
    QString draft() const { return m_draft; }

private:
    void goOn();
    void act();
    void useModal(QWidget *modal);
    void useHost();
    void useWindow(QWidget *window);
    void use(QWidget *widget);
    void useButton(QAbstractButton *button);
    void useChoice(QComboBox *box);
    void useLevel(QWidget *widget);
    void useField(QWidget *field);
    void drag(QWidget *widget);
    void applySnapshot();
    bool isSpared(const QWidget *widget);
    QString levelPath(const QWidget *level) const;
    void note(const QString &what);

    Station *m_station;
    quint32 m_seed;
    QString m_ownCue;
    QRandomGenerator m_dice;
    QByteArray m_snapshot;
    QString m_draft;
    QStringList m_trace;
    int m_recklessness = 5;
    int m_pauseMs = 0;
    int m_acts = 0;
    bool m_running = false;
    bool m_acting = false;
};

} // namespace proof
