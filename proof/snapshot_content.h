#pragma once

#include <QByteArray>
#include <QJsonValue>
#include <QPair>
#include <QStringList>
#include <QVector>

namespace proof {

/// What a snapshot document says, read from the document alone.
struct SnapshotContent
{
    QString firmware; ///< as in "v1.2.0"
    QStringList elements;
    QVector<QPair<QString, QJsonValue>> settings; ///< path and value of what loading it sends, in this order
};

/// As much of it as there is: a document may have been cut off.
SnapshotContent contentOf(const QByteArray &document);

/// What is wrong with a snapshot that the editor has just made of a device that has been read.
QStringList snapshotProblems(const SnapshotContent &content, const QString &firmware);

} // namespace proof
