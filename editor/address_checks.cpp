#include "editor/address_checks.h"

#include <QStringList>

bool isAcceptableAddress(const QString &text)
{
    const QStringList parts = text.split(QLatin1Char('.'));
    return parts.size() >= 4 && parts.first().toInt() != 0;
}

bool isAcceptablePort(const QString &text)
{
    const int port = text.toInt();
    return port >= 1 && port <= 65535;
}
