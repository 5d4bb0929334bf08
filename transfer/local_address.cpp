#include "transfer/local_address.h"

#include <algorithm>

QHostAddress firstReachableAddress(const QList<QNetworkAddressEntry> &entries)
{
    const auto reachable = [](const QNetworkAddressEntry &entry) {
        return entry.ip().protocol() == QAbstractSocket::IPv4Protocol
            && entry.ip() != QHostAddress::LocalHost;
    };
    const auto found = std::find_if(entries.cbegin(), entries.cend(), reachable);
    return found == entries.cend() ? QHostAddress() : found->ip();
}

QHostAddress localAddress(const QList<QNetworkInterface> &interfaces, int index)
{
    const auto found
        = std::find_if(interfaces.cbegin(), interfaces.cend(),
                       [index](const QNetworkInterface &candidate) { return candidate.index() == index; });
    return found == interfaces.cend() ? QHostAddress() : firstReachableAddress(found->addressEntries());
}
