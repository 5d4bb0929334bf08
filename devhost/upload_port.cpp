#include "devhost/upload_port.h"

#include <QCoreApplication>
#include <QUdpSocket>

namespace devhost {

namespace {

constexpr quint16 UploadPort = 69;

QString text(const char *source)
{
    return QCoreApplication::translate("devhost::UploadPort", source);
}

} // namespace

QString uploadPortAdvice(quint16 port, bool forbidden, const QString &reason)
{
    if (reason.isEmpty())
        return QString();
    if (forbidden)
        return text("Voice cues cannot be uploaded yet: this system keeps UDP port %1 from ordinary users. "
                    "Permit it with:\nsudo sysctl -w net.ipv4.ip_unprivileged_port_start=%1")
            .arg(port);
    return text("Voice cues cannot be uploaded yet: UDP port %1 is in use by another program (%2). Find it "
                "with:\nsudo ss -lunp sport = :%1")
        .arg(QString::number(port), reason);
}

QString uploadPortProblem()
{
    QUdpSocket probe;
    if (probe.bind(QHostAddress(QHostAddress::AnyIPv4), UploadPort, QUdpSocket::DontShareAddress))
        return QString();
    return uploadPortAdvice(UploadPort, probe.error() == QAbstractSocket::SocketAccessError,
                            probe.errorString());
}

} // namespace devhost
