#pragma once

#include "dsp/change_records.h"
#include "dsp/port_colors.h"
#include "protocol/paths.h"

#include <QJsonObject>
#include <QLatin1String>
#include <QSize>
#include <QVector>

/// Which of the two strip layouts and parameter numberings a block uses.
enum class StripKind { Input, Output };

/// What tells one strip editor from the others. The six blocks are the constants below.
struct StripVariant
{
    StripKind kind;
    /// Text above each strip; %1 is the channel number, counted from 1.
    QLatin1String stripLabel;
    /// Index of the byte of a level datagram that feeds the first strip; the others follow it.
    int firstLevelByte;
    /// Whether a strip that is not available is covered with red.
    bool overlay;
    QSize initialSize;
    QRgb color; ///< of the kind of port

    /// Parameter numbers of the two changes that have a path of their own on the device.
    constexpr int muteParameter() const { return kind == StripKind::Input ? +InputMute : +OutputMute; }
    constexpr int gainParameter() const { return kind == StripKind::Input ? +InputGain : +OutputGain; }
};

// clang-format off
inline constexpr StripVariant netRxVariant{StripKind::Input, path::literal("CH %1"), 3, false, {320, 274}, color::network};
inline constexpr StripVariant usbInVariant{StripKind::Input, path::literal("CH %1"), 7, true, {320, 357}, color::usb};
inline constexpr StripVariant btInVariant{StripKind::Input, path::literal("BT %1"), 9, true, {320, 357}, color::bluetooth};
inline constexpr StripVariant netTxVariant{StripKind::Output, path::literal("CH %1"), 12, true, {320, 274}, color::network};
inline constexpr StripVariant usbOutVariant{StripKind::Output, path::literal("CH %1"), 16, true, {320, 274}, color::usb};
inline constexpr StripVariant btOutVariant{StripKind::Output, path::literal("BT Out %1"), 18, true, {320, 274}, color::bluetooth};
// clang-format on

/// Everything that a channel object of a section says, in the order in which a strip shows it. Members that
/// are missing or of another type read as false and 0.
QVector<StripRecord> recordsOfChannel(StripKind kind, const QJsonObject &channel);

/// What a strip shows while its channel is not available: not muted, not inverted, 0 dB.
QVector<StripRecord> recordsOfUnavailableChannel(StripKind kind);
