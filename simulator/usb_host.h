#pragma once

#include <QJsonObject>

namespace sim {

/// The computer at the device's USB socket. By itself it stays for a while, sleeps, wakes, and is unplugged.
class UsbHost
{
public:
    enum class Plug { Auto, In, Out };

    /// Holds it at the socket or away from it; its round goes on meanwhile.
    void setPlug(Plug plug) { m_plug = plug; }

    /// Plugged in afresh, as after a power cycle.
    void powerUp();
    void advance(int ms);

    /// Audio flows from and to the computer.
    bool isActive() const;

    /// The content of "/status/usb": state "connected", "suspended" or "disconnected".
    QJsonObject status() const;

private:
    const char *state() const;

    Plug m_plug = Plug::Auto;
    int m_elapsed = 0; // ms into the round
};

} // namespace sim
