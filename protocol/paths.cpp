#include "protocol/paths.h"

namespace path {

QString indexed(QLatin1String pattern, int index)
{
    return QString(pattern).arg(index);
}

QString component(const QString &path, int n)
{
    return path.section(QLatin1Char('/'), n, n);
}

bool changesStoredSettings(const QString &path)
{
    return path.startsWith(QLatin1String("/system/")) || path.startsWith(QLatin1String("/preset/"));
}

} // namespace path
