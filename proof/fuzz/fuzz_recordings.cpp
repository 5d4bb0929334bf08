// Recorded sessions. What is read from one must be fit to be replayed.

#include "simulator/recording.h"

#include <QBuffer>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    QByteArray text = QByteArray::fromRawData(reinterpret_cast<const char *>(data), int(size));
    QBuffer file(&text);
    file.open(QIODevice::ReadOnly);
    const sim::RecordingRead read = sim::readRecording(&file, QString());
    if (!read.error.isEmpty())
        return 0;
    if (read.recording.device.isEmpty() && read.recording.requests.isEmpty())
        qFatal("nothing to replay, and no word about it");
    for (const sim::RecordedRequest &request : read.recording.requests) {
        for (const sim::RecordedReply &reply : request.replies) {
            if (reply.afterMs < 0)
                qFatal("a reply from before its request");
        }
    }
    return 0;
}
