// Whatever claims to be a reply of the device, to an editor that is live.

#include "proof/fuzz/lines.h"
#include "proof/fuzz/live_editor.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    support::EditorSession &session = proof::liveEditor();
    for (const QByteArray &reply : linesOf(data, size))
        session.script->deliver(reply);
    proof::letHappen();
    session.script->forget();
    return 0;
}
