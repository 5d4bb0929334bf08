#pragma once

#include <QByteArray>
#include <QString>

/// Larger documents are refused before they are read; a snapshot of this model takes some 8 KB.
constexpr int LargestSnapshot = 4 * 1024 * 1024;

/// The text of a snapshot document, or a null text when it is none that should be read: too large, not in
/// UTF-8, with a document type, or with more or larger tags than any snapshot has. Each of those could make
/// an XML reader spend minutes or gigabytes on a small file. A document that is cut off or not well-formed
/// passes; where it ends is for the reader to find.
QString readableText(const QByteArray &document);
