#pragma once

#include <QFile>

namespace devhost {

/// A file that grows line by line. Each line is with the system when write() returns, so that a crash of the
/// program loses none; one that could not be written whole is taken back.
class LineFile
{
public:
    /// @p mode is Truncate, or NewOnly, which refuses a file that is there. The answer is empty, or a
    /// sentence for the user.
    QString open(const QString &path, QIODevice::OpenMode mode);
    void close() { m_file.close(); }

    /// False when the line is not in the file; error() says why, and the file is closed.
    bool write(const QByteArray &line);

    bool isOpen() const { return m_file.isOpen(); }
    QString path() const { return m_file.fileName(); }
    qint64 lines() const { return m_lines; }
    QString error() const { return m_error; }

private:
    QFile m_file;
    qint64 m_lines = 0;
    QString m_error;
};

} // namespace devhost
