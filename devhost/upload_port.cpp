#include "devhost/upload_port.h"

#include <QSysInfo>
#include <QUdpSocket>

namespace devhost {

namespace {

/// The command that names whoever has the port.
QString findCommand(const QString &kernel)
{
    if (kernel == QLatin1String("winnt"))
        return QStringLiteral("netstat -abn -p UDP");
    return kernel == QLatin1String("linux") ? QStringLiteral("sudo ss -lunp sport = :69")
                                            : QStringLiteral("sudo lsof -nP -iUDP:69");
}

} // namespace

QString uploadPortProblem()
{
    QUdpSocket probe;
    if (probe.bind(QHostAddress(QHostAddress::AnyIPv4), 69, QUdpSocket::DontShareAddress))
        return QString();
    // Elsewhere no port is kept from ordinary users; no access means there that another program has it.
    const QString kernel = QSysInfo::kernelType();
    if (probe.error() == QAbstractSocket::SocketAccessError && kernel == QLatin1String("linux"))
        return QStringLiteral(
            "Voice cues cannot be uploaded yet: this system keeps UDP port 69 from ordinary users. Permit it "
            "with:\nsudo sysctl -w net.ipv4.ip_unprivileged_port_start=69");
    return QStringLiteral("Voice cues cannot be uploaded yet: UDP port 69 is in use by another program (%1). "
                          "Find it with:\n%2")
        .arg(probe.errorString(), findCommand(kernel));
}

} // namespace devhost
