#pragma once

#include "plugin/velmar_sample_plugin_factory.h"
#include "tests/support/editor_session.h"

#include <QtTest>

/// A test whose functions share one editor that is live on a scripted device.
class LiveEditorTest : public QObject
{
    Q_OBJECT

protected:
    QByteArray sentBy(const std::function<void()> &action) { return session->commandsOf(action); }
    QByteArray sentByClick(const QString &name)
    {
        return sentBy([&] { session->click(name); });
    }

    VelmarSamplePluginFactory factory;
    QScopedPointer<support::EditorSession> session;

private slots:
    void init()
    {
        if (!session) {
            session.reset(new support::EditorSession(&factory));
            QVERIFY(session->goLive());
        }
        // Their requests would come in between.
        session->find<QTimer>("status_poll_timer")->stop();
        session->find<QTimer>("metering_request_timer")->stop();
        session->script->acceptAll();
        session->script->setSilent(false);
        session->commandsOf([] {});
        session->plugin->setSettingsChanged(false);
    }

    void cleanupTestCase() { session.reset(); }
};
