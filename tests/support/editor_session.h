#pragma once

#include "host/px_device.h"
#include "tests/support/scripted_device.h"

#include <QApplication>
#include <QPointer>
#include <QScopedPointer>
#include <QTimer>
#include <QWidget>

#include <functional>

class PlexoPluginFactory;

namespace support {

/// A plugin object attached to a scripted device, as a host would hold it.
class EditorSession
{
public:
    explicit EditorSession(PlexoPluginFactory *factory);
    ~EditorSession();

    /// Attaches the device and shows the editor.
    void attach();
    /// Attaches the device, shows the editor and waits until it is live. Returns whether that happened.
    bool goLive();

    QWidget *editor() const { return plugin->getPluginWidget(); }

    /// The editor's widget of that object name and class; fails hard when there is none.
    template <typename Widget>
    Widget *find(const char *name) const
    {
        auto *widget = editor()->findChild<Widget *>(QLatin1String(name));
        if (!widget)
            qFatal("no widget named %s", name);
        return widget;
    }
    template <typename Widget>
    Widget *find(const QString &name) const
    {
        return find<Widget>(name.toLatin1().constData());
    }

    /// Brings the page that the widget is on to the front and clicks it.
    void click(QWidget *widget) const;
    void click(const char *name) const { click(find<QWidget>(name)); }
    void click(const QString &name) const { click(find<QWidget>(name)); }

    /// The set messages that an action leads to, a line each, once all have been answered; repeated level
    /// requests are left out.
    QByteArray commandsOf(const std::function<void()> &action);
    /// Changes what the device holds to a JSON value, and has the editor read it.
    void deviceReports(const QString &path, const QByteArray &json);
    /// The "value" that the editor holds for a section, known by its element in snapshots, as compact JSON.
    QByteArray cached(const char *element) const;

    /// Destroys the plugin object and what it has posted for deletion.
    void close();

    pxDevice device;
    QScopedPointer<PlexoPlugin> plugin;
    QScopedPointer<ScriptedDevice> script;

private:
    PlexoPluginFactory *m_factory;
};

/// Hands the next modal dialog of that class to @p action, once it is open.
template <typename Dialog>
void onceOpen(std::function<void(Dialog *)> action)
{
    auto *poll = new QTimer(qApp);
    QObject::connect(poll, &QTimer::timeout, poll, [poll, action] {
        auto *dialog = qobject_cast<Dialog *>(QApplication::activeModalWidget());
        if (!dialog || !dialog->isVisible())
            return;
        poll->deleteLater();
        poll->stop();
        action(dialog);
    });
    poll->start(5);
}

} // namespace support
