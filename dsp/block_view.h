#pragma once

class QObject;
class QWidget;

/// Makes the view of the device's signal flow: a Quick scene whose blocks call the click slots of
/// @p backend, which the scene knows as "tarnkbx_backend" and which outlives the view.
///
/// Returns the container widget, owned by @p parent; the view itself is owned by the container. A scene that
/// fails to load leaves the container empty.
QWidget *createBlockView(QObject *backend, QWidget *parent);
