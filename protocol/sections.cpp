#include "protocol/sections.h"

#include "protocol/paths.h"

namespace {

constexpr QLatin1String NotInSnapshot(nullptr, 0);

QString valueKey()
{
    return QStringLiteral("value");
}

} // namespace

const std::array<SectionInfo, SectionCount> &sections()
{
    using path::literal;
    static constexpr std::array<SectionInfo, SectionCount> Table = {{
        {Section::Info, path::Info, NotInSnapshot},
        {Section::StatusVoiceCue, path::StatusVoiceCue, NotInSnapshot},
        {Section::StatusUsb, path::StatusUsb, NotInSnapshot},
        {Section::StatusBluetooth, path::StatusBluetooth, NotInSnapshot},
        {Section::Network, path::Network, literal("SYSTEM_NETWORK")},
        {Section::Notifications, path::Notifications, literal("SYSTEM_NOTIFICATIONS")},
        {Section::Metering, path::Metering, literal("SYSTEM_METERING")},
        {Section::ToneGenerator, path::ToneGenerator, literal("SYSTEM_FUNC_GEN")},
        {Section::Usb, path::Usb, literal("SYSTEM_USB")},
        {Section::Bluetooth, path::Bluetooth, literal("SYSTEM_BLUETOOTH")},
        {Section::VoiceCue, path::VoiceCue, literal("SYSTEM_VOICE_CUE")},
        {Section::DanteRx, path::DanteRx, literal("PRESET_RX")},
        {Section::DanteTx, path::DanteTx, literal("PRESET_TX")},
        {Section::UsbPlayback, path::UsbPlayback, literal("PRESET_USB_PLAYBACK")},
        {Section::UsbRecord, path::UsbRecord, literal("PRESET_USB_RECORD")},
        {Section::BtSink, path::BtSink, literal("PRESET_BT_SINK")},
        {Section::BtSource, path::BtSource, literal("PRESET_BT_SOURCE")},
        {Section::DspVoiceCue, path::DspVoiceCue, literal("PRESET_VOICE_CUE")},
        {Section::Mixer, path::Mixer, literal("PRESET_MIXER")},
    }};
    return Table;
}

const SectionInfo &sectionInfo(Section section)
{
    return sections()[size_t(section)];
}

QJsonValue SectionCaches::value(Section section) const
{
    return (*this)[section].value(valueKey());
}

void SectionCaches::setValue(Section section, const QJsonValue &value)
{
    (*this)[section].insert(valueKey(), value);
}
