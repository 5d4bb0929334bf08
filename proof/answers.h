#pragma once

#include <QStringList>

namespace proof {

/// Answers the box or dialog that is open, if any, as somebody who wants to go on working.
void answerOpenBox();

/// A sentence on each box that is open twice.
QStringList doubledBoxes();

} // namespace proof
