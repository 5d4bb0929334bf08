#pragma once

#include "transfer/vm_tftp.h"

#include <QString>

/// What the update dialog tells the user in words, each with what to do where something is wrong.
namespace updatetexts {

QString waiting();
QString notAskedYet();
QString nothingToSend();
/// @p kind comes from unplayableKind().
QString unplayable(const QString &kind);
QString stranger(const QHostAddress &peer, const QString &deviceName, const QHostAddress &deviceAddress);
QString sending(const QHostAddress &peer, int fileSize, int percent);
QString finished(int fileSize);
QString finishedUnplayable(int fileSize);
QString finishedWithStranger(const QHostAddress &peer);
QString failed(VmTftp::Failure failure);

/// Why the port on which a device asks for its file is not open; @p systemText is the system's own words.
QString portClosed(QAbstractSocket::SocketError error, const QString &systemText);

} // namespace updatetexts
