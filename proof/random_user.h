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
    /// Whether each act waits until the one before has reached the device and the editor has it confirmed.
    /// Snapshots are whole then: after half a one the pages stay disabled until Refresh.
    void setPatient(bool patient) { m_patient = patient; }
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
    void enterPort(QWidget *field);
    void drag(QWidget *widget);
    void takeSnapshot();
    void applySnapshot();
    bool isSpared(const QWidget *widget);
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
    int m_warnings = 0; ///< of invalid entries
    int m_lastEntry = 0; ///< the act that changed a field
    bool m_patient = false;
    bool m_running = false;
    bool m_acting = false;
};

} // namespace proof
