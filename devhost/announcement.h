#pragma once

#include "host/px_device.h"

#include <QByteArray>
#include <QString>

#include <optional>

namespace devhost {

/// In bytes; a longer datagram is no announcement.
constexpr int LongestAnnouncement = 4096;

/// What a device says about itself once a second (docs/device-guide.md, "Announcement").
struct Announcement
{
    QString name;
    pxDevice::e_dev_type type = pxDevice::DEV_TYPE_UNKNOWN;
    QString product;
    QString model;
    QString mac;
    uint version = 0;
    uint featureLevel = 0;
    quint16 controlPort = 0;
};

/// Nothing when @p datagram is no announcement, or one with a member missing, mistyped or out of range.
std::optional<Announcement> parseAnnouncement(const QByteArray &datagram);

} // namespace devhost
