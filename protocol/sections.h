#pragma once

#include <QJsonArray>
#include <QJsonObject>
#include <QJsonValue>
#include <QLatin1String>

#include <array>

/// The sections of the parameter tree of which the editor keeps a copy.
enum class Section {
    Info,
    StatusVoiceCue,
    StatusUsb,
    StatusBluetooth,
    Network,
    Notifications,
    Metering,
    ToneGenerator,
    Usb,
    Bluetooth,
    VoiceCue,
    DanteRx,
    DanteTx,
    UsbPlayback,
    UsbRecord,
    BtSink,
    BtSource,
    DspVoiceCue,
    Mixer
};

/// What there is to know of one section.
struct SectionInfo
{
    Section section;
    QLatin1String path;
    QLatin1String snapshotElement; ///< null when snapshots do not hold the section

    bool inSnapshot() const { return snapshotElement.size() > 0; }
};

constexpr int SectionCount = int(Section::Mixer) + 1;

/// Every section, in the order of the enum; those of a snapshot stand in document order.
const std::array<SectionInfo, SectionCount> &sections();

const SectionInfo &sectionInfo(Section section);

/// The editor's copy of the device's state: per section the last get reply, of which readers use "value".
/// "/status/bluetooth" and the mixer are put together from several replies and hold only "value".
class SectionCaches
{
public:
    QJsonObject &operator[](Section section) { return m_caches[size_t(section)]; }
    const QJsonObject &operator[](Section section) const { return m_caches[size_t(section)]; }

    QJsonValue value(Section section) const;
    /// "value" as an object or array; empty when it is missing or of another type.
    QJsonObject object(Section section) const { return value(section).toObject(); }
    QJsonArray array(Section section) const { return value(section).toArray(); }

    void setValue(Section section, const QJsonValue &value);

private:
    std::array<QJsonObject, SectionCount> m_caches;
};
