#pragma once

#include <QByteArray>
#include <QString>

namespace devhost {

/// One message as a line of JSON, with its line feed: `t_ms`, `dir`, `device` and `text`. A message that is
/// no valid UTF-8 has "bytes", in Base64 (RFC 4648), in place of "text".
QByteArray messageLine(qint64 ms, const char *direction, const QString &device, const QByteArray &message);

/// The same, always with "bytes".
QByteArray bytesLine(qint64 ms, const char *direction, const QString &device, const QByteArray &message);

} // namespace devhost
