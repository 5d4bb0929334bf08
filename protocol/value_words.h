#pragma once

#include <QLatin1String>
#include <QString>

/// The words in which the device tells settings that the editor shows as choices. Compared case-sensitively.
namespace words {

/// Index of the connection-mode choice: 0 "basic", 1 "reconnect", 2 "exclusive" and any other word.
int connectionModeIndex(const QString &word);
/// The word for a choice; indices outside 0 to 2 count as 2.
QString connectionModeWord(int index);

/// Index of the audio-bridging choice: 0 "both", 1 "media", 2 "hfp" and any other word.
int profileIndex(const QString &word);
QString profileWord(int index);

/// The USB audio mode as the editor shows it: a base mode with two options.
struct UsbMode
{
    bool speakerphone = false; ///< else a plain two-in/two-out sound card
    bool echoCancellation = false; ///< only with speakerphone
    bool telephony = false; ///< only with speakerphone
};

QString usbModeWord(const UsbMode &mode);
/// A word that the device should not know reads as a speakerphone without options.
UsbMode usbMode(const QString &word);

constexpr QLatin1String StaticAddress("static", 6);
constexpr QLatin1String DynamicAddress("dhcp", 4);

} // namespace words
