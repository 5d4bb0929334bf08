#pragma once

#include <QByteArray>
#include <QString>

namespace devhost {

/// The largest snapshot document that is read, in bytes.
constexpr qint64 LargestSnapshot = 4 * 1024 * 1024;

struct FileContent
{
    QByteArray bytes;
    QString error; ///< a sentence for the user; empty when all was read
};

/// Reads all of @p path, or nothing when it is larger than @p most bytes.
FileContent readWholeFile(const QString &path, qint64 most);

/// Writes all of @p bytes or leaves the file as it was. The answer is empty, or a sentence for the user.
QString writeWholeFile(const QString &path, const QByteArray &bytes);

} // namespace devhost
