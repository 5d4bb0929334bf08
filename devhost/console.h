#pragma once

namespace devhost {

/// Whether what the program prints is read anywhere. On Windows, where it has no console of its own, it first
/// joins the one that it was started from. One source file a system.
bool joinConsole();

} // namespace devhost
