#include "simulator/tftp_uri.h"

#include "simulator/ipv4_text.h"

#include <QRegularExpression>

namespace sim {

std::optional<TftpUri> parseTftpUri(const QString &text)
{
    static const QRegularExpression form(QStringLiteral("\\Atftp://([0-9.]+)(?::([0-9]{1,5}))?/(.+)\\z"),
                                         QRegularExpression::DotMatchesEverythingOption);
    const QRegularExpressionMatch match = form.match(text);
    const std::optional<quint32> host = ipv4FromText(match.captured(1));
    if (!match.hasMatch() || !host)
        return std::nullopt;
    TftpUri uri{QHostAddress(*host), 69, match.captured(3)};
    if (!match.captured(2).isEmpty())
        uri.port = quint16(match.capturedRef(2).toUShort());
    if (uri.port == 0 || uri.file.contains(QChar(0)))
        return std::nullopt;
    return uri;
}

} // namespace sim
