#pragma once

#include <QColor>

namespace devhost {

/// The colours in which messages are shown, on dark and on light ground.
enum class LogInk { Sent, Received, Plugin, Host, Attention, Trouble, Quiet, SelectedRow };

/// For the ground that the application's palette has now.
QColor colorOf(LogInk ink);

} // namespace devhost
