#pragma once

#include <QString>

class QWidget;

/// What a user expects to reach the device by what they do at a control, written from the device's side.
namespace proof::expected {

/// The path of what a click at the button, or a choice in the box, sets at once; empty when the control is
/// none of those.
QString pathOf(const QWidget *control);
/// The word for a choice at @p index of the box of that name.
QString word(const QString &box, int index);
/// The path of the gain that a strip's fader sets; empty for other level controls.
QString levelPath(const QWidget *level);

} // namespace proof::expected
