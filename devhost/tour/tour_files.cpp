#include "devhost/tour/tour_files.h"

#include <QDir>
#include <QFile>

namespace devhost::tour {

namespace {

QString listIn(const QDir &folder)
{
    return folder.filePath(QStringLiteral("tour-files.txt"));
}

} // namespace

void removeEarlierFiles(const QDir &folder)
{
    QFile list(listIn(folder));
    if (!list.open(QIODevice::ReadOnly))
        return;
    while (!list.atEnd()) {
        const QString name = QString::fromUtf8(list.readLine()).trimmed();
        if (!name.isEmpty() && !name.contains(QLatin1Char('/')))
            QFile::remove(folder.filePath(name));
    }
    list.remove();
}

void noteFile(const QDir &folder, const QString &name)
{
    QFile list(listIn(folder));
    if (list.open(QIODevice::Append))
        list.write(name.toUtf8() + '\n');
}

} // namespace devhost::tour
