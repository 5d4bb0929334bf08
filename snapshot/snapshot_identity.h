#pragma once

#include <QString>

/// What ties a snapshot document to a device.
struct SnapshotIdentity
{
    QString productId;
    QString productName;
    uint firmwareVersion = 0; ///< of the attached device, as pxDevice counts versions
    uint lowestFirmware = 0; ///< oldest firmware whose snapshots may be applied, likewise
};
