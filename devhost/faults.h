#pragma once

#include <QJsonObject>
#include <QString>
#include <QVector>

namespace devhost {

/// One number by which a simulated device misbehaves.
struct FaultNumber
{
    enum Unit { Ms, Percent, Requests };

    const char *name; ///< under "/faults"
    const char *label;
    const char *tip;
    Unit unit;
};

/// One of several words, with what it means.
struct FaultWord
{
    const char *word;
    const char *label;
};

/// One thing that a simulated device can be told.
struct Order
{
    QString path;
    QJsonValue value;
};

QVector<FaultNumber> replyFaults();
QVector<FaultNumber> transferFaults();
QVector<FaultNumber> presenceFaults();
/// Of "/faults/tftp-fault".
QVector<FaultWord> transferWords();
/// Of "/phone" and "/usb"; the first one is what a device does by itself.
QVector<FaultWord> phoneWords();
QVector<FaultWord> usbWords();

// @p nodes are those at the top of a simulated device's orders, by name.

/// Says in a few words what is on; empty when all is well.
QString summaryOf(const QJsonObject &nodes);
/// Turns off what is on.
QVector<Order> allWell(const QJsonObject &nodes);
/// The channels whose levels can be pushed: "dante_rx/0" and so on.
QStringList channelsOf(const QJsonObject &nodes);

} // namespace devhost
