#pragma once

#include "plugin/velmar_sample_plugin_factory.h"
#include "tests/support/editor_session.h"

namespace bench {

/// A live editor with all seven block editors open and visible.
class AllEditors
{
public:
    AllEditors();

    support::EditorSession session;

private:
    static PlexoPluginFactory *factory();
};

/// A level datagram whose levels move with @p step as a programme would move them.
QByteArray levels(int step);

} // namespace bench
