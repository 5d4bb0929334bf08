#pragma once

#include "devhost/line_file.h"

#include <QElapsedTimer>
#include <QObject>

namespace devhost {

class DeviceTransport;

/// Writes the messages that a transport carries into a file, a line each as in message_line.h. Times count
/// from the beginning of the file, `dir` is "tx" or "rx".
class MessageRecorder : public QObject
{
    Q_OBJECT

public:
    /// @p transport is not owned.
    explicit MessageRecorder(const DeviceTransport *transport, QObject *parent = nullptr);

    /// Begins a new file. The answer is empty, or a sentence on what failed.
    QString start(const QString &path);

private:
    void write(const char *direction, const QString &device, const QByteArray &message);

    LineFile m_file;
    QElapsedTimer m_clock;
};

} // namespace devhost
