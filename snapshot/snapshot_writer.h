#pragma once

#include "protocol/sections.h"
#include "snapshot/snapshot_identity.h"

#include <QByteArray>

/// The cached configuration as a snapshot document: indented XML in UTF-8, one element per section whose text
/// is the section's last get reply as compact JSON. A section that was never read is "{}".
QByteArray writeSnapshot(const SectionCaches &caches, const SnapshotIdentity &identity);
