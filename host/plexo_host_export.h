#pragma once

#include <QtGlobal>

// The host library is shared: a host and every plugin it loads must agree on one set of meta-objects.
#ifdef PLEXO_HOST_BUILD
#define PLEXO_HOST_EXPORT Q_DECL_EXPORT
#else
#define PLEXO_HOST_EXPORT Q_DECL_IMPORT
#endif
