#pragma once

#include <QStringList>

class PlexoPluginFactory;

namespace proof {

/// Loads the plugin library as a host does; ends the program with a sentence when that fails. Qt's own
/// dialogs are used from here on, so that they can be answered, and each warning that is printed is kept.
PlexoPluginFactory *loadPlugin();

/// The warnings printed since the last call.
QStringList takeWarnings();

} // namespace proof
