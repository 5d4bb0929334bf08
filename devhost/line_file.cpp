#include "devhost/line_file.h"

#include <QCoreApplication>
#include <QDir>

namespace devhost {

QString LineFile::open(const QString &path, QIODevice::OpenMode mode)
{
    m_lines = 0;
    m_file.setFileName(path);
    if (m_file.open(QIODevice::WriteOnly | QIODevice::Unbuffered | mode))
        return QString();
    const QString native = QDir::toNativeSeparators(path);
    if ((mode & QIODevice::NewOnly) && m_file.exists())
        return QCoreApplication::translate("LineFile",
                                           "%1 is there already and was left as it is. Choose another name.")
            .arg(native);
    return QCoreApplication::translate("LineFile", "%1 cannot be written: %2. Choose another folder.")
        .arg(native, m_file.errorString());
}

bool LineFile::write(const QByteArray &line)
{
    const qint64 end = m_file.pos();
    if (m_file.write(line) == line.size()) {
        ++m_lines;
        return true;
    }
    const QString reason = m_file.errorString();
    m_file.resize(end);
    m_file.close();
    m_error = reason;
    return false;
}

} // namespace devhost
