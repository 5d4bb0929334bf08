#pragma once

#include <QElapsedTimer>
#include <QFile>
#include <QObject>

namespace devhost {

class DeviceTransport;

/// Writes every message between the host and its devices into a file, one JSON object a line:
/// `t_ms` (milliseconds since the recording began), `dir` ("tx" or "rx"), `device`, `text`.
class MessageRecorder : public QObject
{
    Q_OBJECT

public:
    explicit MessageRecorder(QObject *parent = nullptr);

    /// Begins a new file. The answer is empty, or a sentence on what failed.
    QString start(const QString &path);
    void record(const DeviceTransport *transport);

    /// One line with its end. Bytes that are no UTF-8 become replacement characters.
    static QByteArray lineOf(qint64 ms, const char *direction, const QString &device,
                             const QByteArray &message);

private:
    void write(const char *direction, const QString &device, const QByteArray &message);

    QFile m_file;
    QElapsedTimer m_clock;
};

} // namespace devhost
