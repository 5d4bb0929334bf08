// Snapshot documents, checked and, where they pass, applied to a live editor.

#include "proof/fuzz/live_editor.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    support::EditorSession &session = proof::liveEditor();
    const QByteArray document(reinterpret_cast<const char *>(data), int(size));
    if (session.plugin->checkSnapshot(document))
        session.plugin->applySnapshot(document);
    session.plugin->clearVelmarAsciiPendingRequest();
    proof::letHappen();
    session.script->forget();
    return 0;
}
