#pragma once

#include <QByteArray>
#include <QList>

/// The input of a fuzz target as the datagrams that it stands for, one a line.
inline QList<QByteArray> linesOf(const uint8_t *data, size_t size)
{
    return QByteArray(reinterpret_cast<const char *>(data), int(size)).split('\n');
}
