#pragma once

#include "devhost/level_listener.h"
#include "devhost/line_file.h"

#include <QElapsedTimer>
#include <QObject>
#include <QSet>

namespace devhost {

class DeviceFinder;
class DeviceTransport;

/// Keeps what goes on between the host and its devices as JSON lines, as docs/simulated-device.md describes
/// them: messages of the transports it follows, and levels. Each line is written as it happens.
class SessionRecorder : public QObject
{
    Q_OBJECT

public:
    /// @p finder is not owned.
    explicit SessionRecorder(const DeviceFinder *finder, QObject *parent = nullptr);

    /// @p transport is not owned.
    void follow(const DeviceTransport *transport);
    void setInterface(const QNetworkInterface &interface);

    /// Begins a recording and ends an earlier one. A file that is there is left as it is. The answer is
    /// empty, or a sentence for the user.
    QString start(const QString &path);
    void stop();
    bool isRecording() const { return m_file.isOpen(); }
    /// Of the present recording, or the last one.
    QString path() const { return m_file.path(); }
    qint64 lines() const { return m_file.lines(); }

signals:
    /// A recording has begun or ended.
    void changed();
    /// A sentence for the user.
    void problem(const QString &sentence);

private:
    void record(const char *direction, const QString &device, const QByteArray &message);
    void meet(const QString &device);
    void write(const QByteArray &line);

    const DeviceFinder *m_finder;
    LevelListener m_levels;
    LineFile m_file;
    QElapsedTimer m_clock;
    QSet<QString> m_met; ///< devices that the recording has described
};

} // namespace devhost
