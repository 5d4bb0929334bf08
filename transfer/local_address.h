#pragma once

#include <QHostAddress>
#include <QList>
#include <QNetworkAddressEntry>
#include <QNetworkInterface>

/// Where a device can reach this computer: the first IPv4 address of @p entries other than 127.0.0.1.
/// A null address when there is none.
QHostAddress firstReachableAddress(const QList<QNetworkAddressEntry> &entries);

/// The same on the one of @p interfaces that has the system's number @p index (QNetworkInterface::index());
/// pass QNetworkInterface::allInterfaces(). A null address when no interface has that number.
QHostAddress localAddress(const QList<QNetworkInterface> &interfaces, int index);
