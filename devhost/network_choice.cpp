#include "devhost/network_choice.h"

#include <QStringList>

#include <algorithm>

namespace devhost {

namespace {

bool isLoopback(const QNetworkInterface &interface)
{
    return interface.flags() & QNetworkInterface::IsLoopBack;
}

bool hasIpv4(const QNetworkInterface &interface)
{
    const QList<QNetworkAddressEntry> entries = interface.addressEntries();
    return std::any_of(entries.cbegin(), entries.cend(), [](const QNetworkAddressEntry &entry) {
        return entry.ip().protocol() == QAbstractSocket::IPv4Protocol;
    });
}

bool isUsable(const QNetworkInterface &interface)
{
    const QNetworkInterface::InterfaceFlags flags = interface.flags();
    // Loopback carries multicast between programs of this machine even where it does not say so.
    const bool multicast = flags & (QNetworkInterface::CanMulticast | QNetworkInterface::IsLoopBack);
    return (flags & QNetworkInterface::IsUp) && multicast && hasIpv4(interface);
}

InterfaceChoice noInterface(const QString &sentence)
{
    return {{}, sentence};
}

InterfaceChoice namedInterface(const QList<QNetworkInterface> &usable, const QString &name)
{
    QStringList names;
    for (const QNetworkInterface &interface : usable) {
        if (interface.name() == name || interface.humanReadableName() == name)
            return {interface, QString()};
        names.append(interface.humanReadableName());
    }
    return noInterface(QStringLiteral("There is no usable network interface \"%1\". Usable here: %2.")
                           .arg(name, names.join(QStringLiteral(", "))));
}

} // namespace

QList<QNetworkInterface> usableInterfaces()
{
    QList<QNetworkInterface> usable;
    for (const QNetworkInterface &interface : QNetworkInterface::allInterfaces()) {
        if (isUsable(interface))
            usable.append(interface);
    }
    return usable;
}

InterfaceChoice chooseInterface(const QString &name, bool simulating)
{
    const QList<QNetworkInterface> usable = usableInterfaces();
    if (!name.isEmpty()) {
        InterfaceChoice choice = namedInterface(usable, name);
        if (!simulating || !choice.error.isEmpty() || isLoopback(choice.interface))
            return choice;
        return noInterface(QStringLiteral("Simulated devices live on the loopback interface. Leave "
                                          "--interface or --simulate out."));
    }
    const auto find = [&usable](bool loopback) {
        return std::find_if(usable.cbegin(), usable.cend(), [loopback](const QNetworkInterface &candidate) {
            return isLoopback(candidate) == loopback;
        });
    };
    auto chosen = find(simulating);
    if (chosen == usable.cend() && !simulating)
        chosen = find(true);
    if (chosen == usable.cend())
        return noInterface(QStringLiteral("No network interface can be used. Connect this computer to a "
                                          "network, or bring its loopback interface up."));
    return {*chosen, QString()};
}

} // namespace devhost
