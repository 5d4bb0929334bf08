// Whatever claims to be a reply of the device, to an editor that is live.

#include "proof/fuzz/lines.h"
#include "proof/fuzz/live_editor.h"

namespace {

constexpr int BoxesLeftOut = 100;

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    support::EditorSession &session = proof::liveEditor();
    static int boxes = 0;
    for (const QByteArray &reply : linesOf(data, size)) {
        // The box that this one opens takes as long as hundreds of others, and is always the same.
        if (!reply.contains("NACK LOAD") || ++boxes % BoxesLeftOut == 0)
            session.script->deliver(reply);
    }
    proof::letHappen();
    session.script->forget();
    return 0;
}
