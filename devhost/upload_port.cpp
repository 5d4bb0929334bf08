#include "devhost/upload_port.h"

#include <QUdpSocket>

namespace devhost {

QString uploadPortProblem()
{
    QUdpSocket probe;
    if (probe.bind(QHostAddress(QHostAddress::AnyIPv4), 69, QUdpSocket::DontShareAddress))
        return QString();
    if (probe.error() == QAbstractSocket::SocketAccessError)
        return QStringLiteral(
            "Voice cues cannot be uploaded yet: this system keeps UDP port 69 from ordinary users. Permit it "
            "with:\nsudo sysctl -w net.ipv4.ip_unprivileged_port_start=69");
    return QStringLiteral("Voice cues cannot be uploaded yet: UDP port 69 is in use by another program (%1). "
                          "Find it with:\nsudo ss -lunp sport = :69")
        .arg(probe.errorString());
}

} // namespace devhost
