#pragma once

#include "protocol/json.h"
#include "protocol/paths.h"
#include "protocol/reply_handlers.h"

#include <QByteArray>

/// One setting that a message of its own changes. Sending it and taking over the device's confirmation read
/// the same row, and so does its path: section/member, or section/element/member.
struct Setting
{
    enum Rendering { Document, Template };
    enum Refresh { Quiet, Refreshing };

    Section section; ///< whose value holds it
    QLatin1String member; ///< empty for a section that is set as a whole
    json::Type type;
    Rendering rendering = Document;
    Refresh refresh = Quiet; ///< whether the settings pages show what was confirmed
    int element = -1; ///< channel or cue, counted from 0, where the section is an array

    QString path() const;
    /// The message that asks the device for @p value.
    QByteArray message(const QJsonValue &value) const;
    /// Writes a confirmed value into the section's cache. An element that the device never told of is left
    /// alone.
    ReplyHandler confirmation() const;
};

/// Every such setting.
namespace setting {

constexpr QLatin1String WholeValue(nullptr, 0);
using S = Setting;
using T = json::Type;
using path::literal;

// clang-format off
inline constexpr Setting Network             {Section::Network,       WholeValue,                 T::Object,  S::Document, S::Refreshing};
inline constexpr Setting Notifications       {Section::Notifications, WholeValue,                 T::Object,  S::Document, S::Refreshing};
inline constexpr Setting NotificationsEnable {Section::Notifications, literal("enable"),          T::Bool,    S::Document, S::Quiet};
inline constexpr Setting Metering            {Section::Metering,      WholeValue,                 T::Object,  S::Document, S::Refreshing};
inline constexpr Setting ToneEnable          {Section::ToneGenerator, literal("enable"),          T::Bool,    S::Template, S::Quiet};
inline constexpr Setting ToneFrequency       {Section::ToneGenerator, literal("frequency"),       T::Integer, S::Template, S::Quiet};
inline constexpr Setting ToneAmplitude       {Section::ToneGenerator, literal("amplitude"),       T::Integer, S::Template, S::Quiet};
inline constexpr Setting UsbMode             {Section::Usb,           literal("mode"),            T::Text,    S::Document, S::Refreshing};
inline constexpr Setting UsbPriority         {Section::Usb,           literal("priority"),        T::Bool,    S::Document, S::Refreshing};
inline constexpr Setting BluetoothEnable     {Section::Bluetooth,     literal("enable"),          T::Bool,    S::Document, S::Refreshing};
inline constexpr Setting BluetoothButton     {Section::Bluetooth,     literal("button"),          T::Bool,    S::Document, S::Refreshing};
inline constexpr Setting BluetoothName       {Section::Bluetooth,     literal("name"),            T::Text,    S::Document, S::Refreshing};
inline constexpr Setting BluetoothMode       {Section::Bluetooth,     literal("connection_mode"), T::Text,    S::Document, S::Refreshing};
inline constexpr Setting BluetoothProfile    {Section::Bluetooth,     literal("profile"),         T::Text,    S::Document, S::Refreshing};

constexpr Setting cueEnable(int cue)
{ return {Section::VoiceCue, literal("enable"), T::Bool, S::Document, S::Refreshing, cue}; }
/// Whole dB.
constexpr Setting channelGain(Section strips, int channel)
{ return {strips, literal("gain"), T::Integer, S::Template, S::Quiet, channel}; }
constexpr Setting channelMute(Section strips, int channel)
{ return {strips, literal("mute"), T::Bool, S::Template, S::Quiet, channel}; }
// clang-format on

} // namespace setting
