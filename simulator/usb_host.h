#pragma once

#include <QJsonObject>

namespace sim {

/// The computer at the device's USB socket: it stays for a while, sleeps, wakes, and is unplugged.
class UsbHost
{
public:
    /// Plugged in afresh, as after a power cycle.
    void powerUp();
    void advance(int ms);

    /// Audio flows from and to the computer.
    bool isActive() const;

    /// The content of "/status/usb": state "connected", "suspended" or "disconnected".
    QJsonObject status() const;

private:
    int m_elapsed = 0; // ms into the round
};

} // namespace sim
