#pragma once

namespace proof {

/// Answers the box or dialog that is open, if any, as somebody who wants to go on working.
void answerOpenBox();

} // namespace proof
