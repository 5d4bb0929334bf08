#pragma once

#include <QLatin1String>
#include <QString>

/// The parameter tree of the device: the paths that the editor reads or writes, apart from those of single
/// settings, which follow from their section (protocol/settings.h). Paths are ASCII, compared
/// case-sensitively; indices count from 0.
namespace path {

template <int Size>
constexpr QLatin1String literal(const char (&text)[Size])
{
    return QLatin1String(text, Size - 1);
}

constexpr auto Info = literal("/info");

constexpr auto StatusVoiceCue = literal("/status/voice_cue");
constexpr auto StatusUsb = literal("/status/usb");
constexpr auto StatusBluetooth = literal("/status/bluetooth");
constexpr auto BluetoothState = literal("/status/bluetooth/state");
constexpr auto BluetoothListSize = literal("/status/bluetooth/list_size");
constexpr auto BluetoothListEntry = literal("/status/bluetooth/list/%1");
constexpr auto BluetoothKeep = literal("/status/bluetooth/list/%1/keep");
constexpr auto BluetoothDevice = literal("/status/bluetooth/device");

constexpr auto Network = literal("/system/network");
constexpr auto Notifications = literal("/system/notifications");
constexpr auto Metering = literal("/system/metering");
constexpr auto ToneGenerator = literal("/system/function_gen");
constexpr auto Usb = literal("/system/usb");
constexpr auto Bluetooth = literal("/system/bluetooth");
constexpr auto VoiceCue = literal("/system/voice_cue");

constexpr auto DanteRx = literal("/preset/dsp/dante_rx");
constexpr auto DanteTx = literal("/preset/dsp/dante_tx");
constexpr auto UsbPlayback = literal("/preset/dsp/usb_playback");
constexpr auto UsbRecord = literal("/preset/dsp/usb_record");
constexpr auto BtSink = literal("/preset/dsp/bt_sink");
constexpr auto BtSource = literal("/preset/dsp/bt_source");
constexpr auto DspVoiceCue = literal("/preset/dsp/voice_cue");
constexpr auto Mixer = literal("/preset/dsp/mixer");
constexpr auto MixerRow = literal("/preset/dsp/mixer/%1");
constexpr auto LastMixerRow = literal("/preset/dsp/mixer/6");

constexpr auto Identify = literal("/control/identify");
constexpr auto Defaults = literal("/control/defaults");
constexpr auto Reboot = literal("/control/reboot");
constexpr auto RequestMetering = literal("/control/req_metering");
constexpr auto LoadPreset = literal("/control/load_preset");
constexpr auto SavePreset = literal("/control/save_preset");
constexpr auto Download = literal("/control/fwdl");
constexpr auto BluetoothPair = literal("/control/bluetooth/pair");
constexpr auto BluetoothDisconnect = literal("/control/bluetooth/disconnect");
constexpr auto BluetoothClearList = literal("/control/bluetooth/clear_list");
constexpr auto BluetoothPlay = literal("/control/bluetooth/play");
constexpr auto BluetoothPause = literal("/control/bluetooth/pause");
constexpr auto BluetoothPrevious = literal("/control/bluetooth/prev");
constexpr auto BluetoothNext = literal("/control/bluetooth/next");
constexpr auto BluetoothVolumeUp = literal("/control/bluetooth/vol_up");
constexpr auto BluetoothVolumeDown = literal("/control/bluetooth/vol_down");
constexpr auto VoiceCuePlay = literal("/control/voice_cue/%1/play");

/// How many paired phones the status query asks for, whatever the device reports as the list's size.
constexpr int BluetoothListEntries = 8;
/// Rows of the mixer, one per sink.
constexpr int MixerRows = 7;

/// Fills the index into a path that has one: indexed(MixerRow, 3) is "/preset/dsp/mixer/3".
QString indexed(QLatin1String pattern, int index);

/// Whether a set of this path changes settings that the device stores.
bool changesStoredSettings(const QString &path);

} // namespace path
