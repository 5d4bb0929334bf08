#pragma once

#include <QByteArray>
#include <QObject>
#include <QPointer>
#include <QString>

class PlexoPlugin;
class PlexoPluginFactory;
class QWidget;
class pxDevices;

namespace devhost {

class DeviceTransport;
class KnownDevice;

/// What every editor of one host shares; nothing of it is owned here.
struct SessionPlace
{
    pxDevices *devices = nullptr;
    DeviceTransport *text = nullptr; ///< carries text messages and their replies
    DeviceTransport *aes67 = nullptr; ///< carries binary messages, so that their replies are told apart
    QWidget *styleSource = nullptr; ///< null: the editor keeps its own look
    int interfaceIndex = 0; ///< as in QNetworkInterface::index()
};

/// One open editor: owns the plugin object, carries its messages and passes on what it says. It ends when
/// the plugin asks for it, when the user closes the editor's frame, or when it is destroyed.
class EditorSession : public QObject
{
    Q_OBJECT

public:
    /// Holds @p device as long as it lives.
    EditorSession(const SessionPlace &place, KnownDevice *device, QObject *parent = nullptr);
    ~EditorSession() override;

    /// Creates the plugin object and shows its editor. The answer is empty, or a sentence on what failed.
    QString start(PlexoPluginFactory *factory);
    /// Ends the session; ended() is emitted once, when the state is already that of an ended session.
    void end();

    KnownDevice *device() const { return m_device; }
    QString deviceName() const;
    /// Null before start() and after the end.
    QWidget *editor() const;
    void raiseEditor();
    void setInterfaceIndex(int index);

    /// Empty when the session has ended.
    QByteArray snapshot() const;
    bool acceptsSnapshot(const QByteArray &snapshot) const;
    /// The outcome comes with presetLoadFinished().
    void applySnapshot(const QByteArray &snapshot);
    /// False when the plugin has no device presets.
    bool storePreset(int number);
    bool recallPreset(int number);

    /// Requests that wait for a reply or to be sent.
    int waitingRequests() const;
    /// What the host adds to the status.
    QString hint() const { return m_hint; }
    void setHint(const QString &hint);

    /// The last status the plugin gave, and whether it asked for highlighting.
    QString status() const { return m_status; }
    bool isStatusHighlighted() const { return m_highlighted; }

signals:
    void ended();
    void logged(const QString &line);
    void statusChanged();
    void hostStatus(const QString &text);
    void deviceViewRequested();
    void replyOverdue();
    void presetLoadFinished(bool success);
    void sentText(const QByteArray &message);
    /// Comes before the plugin gets the message.
    void receivedText(const QByteArray &message);
    void applyingSnapshot(const QByteArray &snapshot);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void connectTraffic();
    void connectReports();
    void presentEditor(const QString &pluginName);
    void letGoOfPlugin();
    bool callPresetSlot(const char *slot, int number);

    SessionPlace m_place;
    KnownDevice *m_device;
    QPointer<PlexoPlugin> m_plugin;
    QString m_status;
    QString m_hint;
    bool m_highlighted = false;
    bool m_running = false;
};

} // namespace devhost
