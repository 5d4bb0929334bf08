#pragma once

#include "protocol/sections.h"

#include <QHash>
#include <QJsonObject>
#include <QString>
#include <QVector>

#include <functional>

class DeviceStateOwner;

/// Handles one "OK" reply for the window that it is given.
using ReplyHandler = std::function<void(DeviceStateOwner &window, const QJsonObject &reply)>;
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

/// One get that reads a section or a part of it.
struct SectionGet
{
    QString path;
    ReplyHandler store; ///< writes the reply into the caches
};

/// The gets that read a section, in the order in which they are asked.
QVector<SectionGet> getsOf(Section section);
