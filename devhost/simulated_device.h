#pragma once

#include <QJsonObject>
#include <QObject>
#include <QProcess>
#include <QStringList>

namespace devhost {

/// One simulated device in a process of its own, which ends with this object. It takes orders while it runs
/// (docs/simulated-device.md): faults, and what is around it. It keeps its settings in a file, so that they
/// outlast a new start.
class SimulatedDevice : public QObject
{
    Q_OBJECT

public:
    /// @p arguments are those of every start.
    SimulatedDevice(const QString &name, const QString &program, const QStringList &arguments,
                    QObject *parent = nullptr);
    ~SimulatedDevice() override;

    QString name() const { return m_name; }
    bool isRunning() const { return m_process.state() == QProcess::Running; }

    /// Does nothing while it runs.
    void start();
    /// Changes the node at @p path, "/faults/latency" for one. The outcome comes with changed() or refused().
    void order(const QString &path, const QJsonValue &value);
    /// Everything back to what a good device does, present included.
    void orderAllWell();

    /// What the device last said of the node at @p path; undefined before.
    QJsonValue value(const QString &path) const;
    /// Those whose levels can be pushed: "dante_rx/0" and so on.
    QStringList channels() const;
    /// What is on, in a few words; empty for a device that behaves.
    QString summary() const;

signals:
    /// One line that the process printed for people.
    void said(const QString &line);
    /// It ended or could not be started without having been asked to: a sentence for the user.
    void failed(const QString &sentence);
    /// Other things are on than before, or it runs, or no longer.
    void changed();
    /// An order was not carried out: a sentence for the user.
    void refused(const QString &sentence);

private:
    void send(const QJsonObject &order);
    void readOutput();
    void readAnswer(const QByteArray &line);
    void handleFinished();

    QString m_name;
    QJsonObject m_nodes; ///< by name, without "/"
    QProcess m_process;
};

} // namespace devhost
