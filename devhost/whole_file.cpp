#include "devhost/whole_file.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

namespace devhost {

namespace {

FileContent unreadable(const QString &path, const QString &reason)
{
    return {{},
            QStringLiteral("%1 cannot be read: %2. Choose another file.")
                .arg(QDir::toNativeSeparators(path), reason)};
}

} // namespace

FileContent readWholeFile(const QString &path, qint64 most)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return unreadable(path, file.errorString());
    // One byte more than allowed, whatever size the file claims: a device or a pipe claims none.
    const QByteArray bytes = file.read(most + 1);
    if (file.error() != QFileDevice::NoError)
        return unreadable(path, file.errorString());
    if (bytes.size() > most)
        return {{},
                QStringLiteral("%1 is larger than %2 MiB, so it is no snapshot. Choose another file.")
                    .arg(QDir::toNativeSeparators(path), QString::number(most / 1024 / 1024))};
    return {bytes, QString()};
}

QString writeWholeFile(const QString &path, const QByteArray &bytes)
{
    // Renaming over it would replace a device or a pipe by a file.
    if (QFileInfo::exists(path) && !QFileInfo(path).isFile())
        return QStringLiteral("%1 was not written: it is no file. Choose another name.")
            .arg(QDir::toNativeSeparators(path));
    QSaveFile file(path);
    // Flushed first: commit() does not notice what fails when the last of the buffer is written.
    if (file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() && file.flush() && file.commit())
        return QString();
    return QStringLiteral("%1 was not written: %2. Choose a folder that you may write to, with room left.")
        .arg(QDir::toNativeSeparators(path), file.errorString());
}

} // namespace devhost
