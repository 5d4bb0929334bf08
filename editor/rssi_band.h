#pragma once

/// How good a Bluetooth link's signal is, as the three indicators show it.
enum class SignalBand { None, Bad, Average, Good };

/// The band of a received signal strength in dBm: Good from -67, Average from -80, Bad above -128.
constexpr SignalBand signalBand(int rssi)
{
    if (rssi >= -67)
        return SignalBand::Good;
    if (rssi >= -80)
        return SignalBand::Average;
    return rssi > -128 ? SignalBand::Bad : SignalBand::None;
}

/// What the strength display shows while no phone is connected, in dBm.
constexpr int NoSignal = -128;
