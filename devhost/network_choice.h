#pragma once

#include <QList>
#include <QNetworkInterface>
#include <QString>

namespace devhost {

/// An interface to work on, or a sentence that says why there is none.
struct InterfaceChoice
{
    QNetworkInterface interface;
    QString error;
};

/// The interfaces on which devices can be looked for: up, with an IPv4 address, able to multicast.
QList<QNetworkInterface> usableInterfaces();

/// The interface called @p name, by the system or in its settings. Without a name: loopback when @p
/// simulating, else the first usable one that leaves the machine, else loopback.
InterfaceChoice chooseInterface(const QString &name, bool simulating);

} // namespace devhost
