#pragma once

class QDir;
class QString;

/// The folder that a tour writes into may hold other things: a list in it names the tour's own files.
namespace devhost::tour {

/// Removes what the list names: pictures of an earlier tour would be taken for this one's.
void removeEarlierFiles(const QDir &folder);

/// To be called with the plain name of each file before it is written.
void noteFile(const QDir &folder, const QString &name);

} // namespace devhost::tour
