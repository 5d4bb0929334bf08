#include "dsp/block_view.h"

#include <QQmlContext>
#include <QQuickView>
#include <QUrl>
#include <QWidget>

QWidget *createBlockView(QObject *backend, QWidget *parent)
{
    auto *view = new QQuickView(QUrl(QStringLiteral("qrc:/TarnKBX_QML/DSP.qml")));
    view->rootContext()->setContextProperty(QStringLiteral("tarnkbx_backend"), backend);
    return QWidget::createWindowContainer(view, parent);
}
