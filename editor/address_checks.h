#pragma once

#include <QString>

/// Whether a typed IPv4 address may be one: at least four parts between dots, of which the first is a number
/// other than 0. The device checks the rest.
bool isAcceptableAddress(const QString &text);

/// Whether a typed UDP port is a decimal number from 1 to 65535.
bool isAcceptablePort(const QString &text);
