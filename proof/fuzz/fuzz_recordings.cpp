// Recorded sessions. What is read from one must be fit to be replayed.

#include "proof/fuzz/lines.h"
#include "simulator/recording.h"

#include <QTemporaryFile>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    static QTemporaryFile file(QStringLiteral("/dev/shm/fuzz"));
    if (!file.isOpen() && !file.open())
        qFatal("there is no place for a recording");
    file.resize(0);
    file.seek(0);
    file.write(reinterpret_cast<const char *>(data), qint64(size));
    file.flush();
    const sim::RecordingRead read = sim::readRecording(file.fileName(), QString());
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
