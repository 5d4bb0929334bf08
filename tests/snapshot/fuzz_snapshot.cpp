#include "snapshot/snapshot_reader.h"

/// Looks for documents that crash or stall the reader: fuzz_snapshot [-timeout=SECONDS] [CORPUS].
extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QByteArray document = QByteArray::fromRawData(reinterpret_cast<const char *>(data), int(size));
    isSnapshotFor(document, {QStringLiteral("5"), QStringLiteral("TarnKBX"), 1002003, 1000000});
    readSnapshot(document, [](const SnapshotElement &) { return true; });
    return 0;
}
