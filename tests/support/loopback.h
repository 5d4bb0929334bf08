#pragma once

#include <QNetworkInterface>

#include <algorithm>

/// The loopback interface, whose name is another one on every system.
inline QNetworkInterface loopbackInterface()
{
    const QList<QNetworkInterface> all = QNetworkInterface::allInterfaces();
    const auto found = std::find_if(all.cbegin(), all.cend(), [](const QNetworkInterface &candidate) {
        return candidate.flags() & QNetworkInterface::IsLoopBack;
    });
    return found == all.cend() ? QNetworkInterface() : *found;
}
