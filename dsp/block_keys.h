#pragma once

class QObject;
class QQuickView;
class QWidget;

/// Makes the block diagram usable without a mouse. @p container, which owns @p view, becomes one stop of the
/// tab order; there the arrow keys choose a block, which the scene frames, and Enter or Space opens it by the
/// click slot of @p backend.
void giveBlocksKeys(QWidget *container, QQuickView *view, QObject *backend);
