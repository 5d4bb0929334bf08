#pragma once

#include "protocol/sections.h"

#include <QHash>
#include <QJsonObject>
#include <QString>

class QObject;

/// Handles one "OK" reply for the window that it is given.
using ReplyHandler = void (*)(QObject *window, QJsonObject reply);
/// At most one handler per path; a path is compared exactly.
using ReplyHandlerTable = QHash<QString, ReplyHandler>;

/// What reply handlers and the start-up query need of the editor window.
class DeviceStateOwner
{
public:
    virtual ~DeviceStateOwner() = default;

    virtual SectionCaches &caches() = 0;
    virtual ReplyHandlerTable &getHandlers() = 0;
    /// Shows the cached settings on the widgets.
    virtual void settingsRefresh() = 0;
};

/// The handler that a get of @p path needs; null for a path that the editor does not cache.
ReplyHandler getHandlerFor(const QString &path);

/// The handler that a set of @p path needs to take over the confirmed value; null when there is none.
ReplyHandler setHandlerFor(const QString &path);
