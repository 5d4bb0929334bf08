#pragma once

#include <QElapsedTimer>
#include <QFile>
#include <QObject>

namespace devhost {

class DeviceTransport;

/// Writes the messages that a transport carries into a file, one JSON object a line: `t_ms` (milliseconds
/// since the recording began), `dir` ("tx" or "rx"), `device`, `text`. Bytes that are no UTF-8 become
/// replacement characters.
class MessageRecorder : public QObject
{
    Q_OBJECT

public:
    explicit MessageRecorder(const DeviceTransport *transport, QObject *parent = nullptr);

    /// Begins a new file. The answer is empty, or a sentence on what failed.
    QString start(const QString &path);

private:
    void write(const char *direction, const QString &device, const QByteArray &message);

    QFile m_file;
    QElapsedTimer m_clock;
};

} // namespace devhost
