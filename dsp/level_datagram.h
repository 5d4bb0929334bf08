#pragma once

#include <QByteArray>

#include <optional>

/// The level in dB, -128 to 127, that a level datagram holds for one strip of an editor. Empty when the
/// datagram ends before that byte, so that a short datagram leaves the remaining meters as they are.
std::optional<int> stripLevel(const QByteArray &datagram, int firstLevelByte, int strip);
