#include "protocol/paths.h"

namespace path {

QString indexed(QLatin1String pattern, int index)
{
    return QString(pattern).arg(index);
}

bool changesStoredSettings(const QString &path)
{
    return path.startsWith(QLatin1String("/system/")) || path.startsWith(QLatin1String("/preset/"));
}

} // namespace path
