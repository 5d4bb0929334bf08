#pragma once

#include <QObject>
#include <QProcess>
#include <QStringList>

namespace devhost {

/// One simulated device in a process of its own, which ends with this object. It keeps its settings in a
/// file, so that they outlast a restart with other faults.
class SimulatedDevice : public QObject
{
    Q_OBJECT

public:
    /// @p arguments are those of every start, without faults.
    SimulatedDevice(const QString &name, const QString &program, const QStringList &arguments,
                    QObject *parent = nullptr);
    ~SimulatedDevice() override;

    QString name() const { return m_name; }
    QStringList faults() const { return m_faults; }

    /// Starts the process with @p faults, ending a running one first.
    void start(const QStringList &faults);

signals:
    /// One line that the process printed.
    void said(const QString &line);
    /// It ended or could not be started without having been asked to: a sentence for the user.
    void failed(const QString &sentence);

private:
    void launch();
    void passOnOutput();
    void handleFinished();

    QString m_name;
    QStringList m_arguments;
    QStringList m_faults;
    QProcess m_process;
    bool m_restarting = false;
};

} // namespace devhost
