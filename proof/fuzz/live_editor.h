#pragma once

#include "tests/support/editor_session.h"

namespace proof {

/// The editor of a device that answers everything, live, with all block windows open and a handler in place
/// for each setting. One for the whole run: what an input leaves behind, the next one meets.
support::EditorSession &liveEditor();

/// Lets everything happen that is due now. Painting, which takes longest, is done for many inputs at once.
void letHappen();
/// Whether painting is due with the next letHappen().
bool isPaintingDue();

} // namespace proof
