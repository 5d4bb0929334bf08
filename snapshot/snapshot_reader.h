#pragma once

#include "protocol/sections.h"
#include "snapshot/snapshot_identity.h"

#include <QByteArray>

#include <functional>

/// Whether the document's header allows it to be applied to the device: a file version of at least 1.0, the
/// same product name, and a firmware that is not too old. A document that readableText() refuses is not.
bool isSnapshotFor(const QByteArray &document, const SnapshotIdentity &identity);

/// One element that ended inside the data of a snapshot.
struct SnapshotElement
{
    QString name;
    const SectionInfo *section; ///< null when the name is that of no section
    QJsonObject content; ///< what the section's cache shall hold; empty when the text is no JSON object
};

/// Told of every element that ends; returns whether to read on.
using SnapshotVisitor = std::function<bool(const SnapshotElement &element)>;

/// Reads a document up to its end or first error. Returns whether it holds any data at all.
bool readSnapshot(const QByteArray &document, const SnapshotVisitor &visit);
