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

/// What differs between two snapshot documents, in the order of @p then. Elements that are replies as a
/// device gives them are compared setting by setting; in a document that has none, the texts of all as they
/// are. A document that cannot be read has no settings. Bounded by the documents' size; neither may have a
/// document type.
QVector<SnapshotChange> snapshotChanges(const QByteArray &now, const QByteArray &then);

/// "Dante RX 2: gain" for "/preset/dsp/dante_rx/1/gain"; channels are counted from 1, as in editors. Any
/// other text as it is.
QString settingName(const QString &path);

/// The paths that a snapshot names, each once, in its order.
QStringList snapshotPaths(const QByteArray &document);

} // namespace devhost
