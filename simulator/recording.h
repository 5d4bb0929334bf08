#pragma once

#include <QByteArray>
#include <QJsonObject>
#include <QStringList>
#include <QVector>

class QIODevice;

namespace sim {

struct RecordedReply
{
    int afterMs = 0; ///< time from the request
    QByteArray bytes;
};

/// A request and everything that came before the next one, so also a reply that came twice, or late.
struct RecordedRequest
{
    qint64 atMs = 0; ///< since the recording began
    QByteArray text;
    QVector<RecordedReply> replies; ///< none: it was lost, or its reply was
};

struct RecordedLevels
{
    qint64 atMs = 0;
    QByteArray payload;
};

/// What a host wrote down about one device (docs/simulated-device.md has the format).
struct Recording
{
    QJsonObject device; ///< its first "device" line
    QVector<RecordedRequest> requests;
    QVector<RecordedLevels> levels;
};

struct RecordingRead
{
    Recording recording;
    QString error; ///< why there is nothing to replay; empty when there is
    QStringList notes; ///< sentences on what is not as it should be
};

/// Of a longer file the beginning is read; what it takes in memory stays below three times as much.
constexpr qint64 RecordingBytesMost = 128 * 1024 * 1024;

/// Reads what concerns the device of that name, or the first one when the name is empty.
RecordingRead readRecording(const QString &file, const QString &device);
/// The same from a device that is open.
RecordingRead readRecording(QIODevice *file, const QString &device);

} // namespace sim
