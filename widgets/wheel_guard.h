#pragma once

class QWidget;

namespace vm {

/// Lets the wheel change the number fields and lists inside @p area only while they have the keyboard focus.
/// Otherwise it goes on to whatever scrolls around them, and passing over a field changes nothing.
void wheelNeedsFocus(QWidget *area);

} // namespace vm
