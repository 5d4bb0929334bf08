#pragma once

#include <QByteArray>
#include <QStringList>
#include <QVector>

namespace devhost {

/// One setting that has another value in one snapshot than in another; empty where it is missing.
struct SnapshotChange
{
    QString path;
    QString now;
    QString then;
};

/// What differs between two snapshot documents, in the order of @p then. The texts of their elements are
/// compared setting by setting where they are replies as a device gives them, else as they are. A document
/// that cannot be read has no settings. Bounded by the documents' size; neither may have a document type.
QVector<SnapshotChange> snapshotChanges(const QByteArray &now, const QByteArray &then);

/// The paths that a snapshot names, each once, in its order.
QStringList snapshotPaths(const QByteArray &document);

} // namespace devhost
