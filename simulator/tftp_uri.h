#pragma once

#include <QHostAddress>

#include <optional>

namespace sim {

/// Where a file is to be fetched: "tftp://ADDRESS[:PORT]/FILE". The file name is whatever follows the first
/// "/" after the address, not decoded: hosts put plain file paths there.
struct TftpUri
{
    QHostAddress host;
    quint16 port = 69; // RFC 1350
    QString file;
};

/// Nothing for a text that is no such URI or whose address is not a dotted IPv4 address.
std::optional<TftpUri> parseTftpUri(const QString &text);

} // namespace sim
