#pragma once

#include "protocol/reply_handlers.h"

#include <QObject>

/// Stands in for the editor window: caches and handlers without widgets.
class FakeWindow : public QObject, public DeviceStateOwner
{
    Q_OBJECT

public:
    SectionCaches &caches() override { return m_caches; }
    ReplyHandlerTable &getHandlers() override { return m_getHandlers; }
    void settingsRefresh() override { ++refreshes; }

    int refreshes = 0;

private:
    SectionCaches m_caches;
    ReplyHandlerTable m_getHandlers;
};
