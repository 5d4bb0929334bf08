#pragma once

#include "host/plexo_host_export.h"
#include "host/px_device.h"
#include "host/request_channel.h"

#include <QByteArray>
#include <QHostAddress>
#include <QPointer>
#include <QString>
#include <QVector>
#include <QWidget>

#include <memory>

class PlexoPluginFactory;
class pxDevices;

/// Base class of a device plugin: holds the attached device and owns the request channel, through which
/// every message to the device leaves one at a time and every reply comes back.
///
/// The channel has a text side (JSON and plain-text commands) and an AES67 side (binary messages). The host
/// owns the plugin object and both device objects; it may destroy the plugin at any time, also from a slot
/// connected to one of its signals or while one of its message boxes is open. Any reply from the attached
/// device's name completes the request in flight.
class PLEXO_HOST_EXPORT PlexoPlugin : public QWidget
{
    Q_OBJECT
    Q_PROPERTY(bool devicePresent READ isDevicePresent NOTIFY deviceAvailabilityChanged)

public:
    explicit PlexoPlugin(QWidget *parent = nullptr);
    ~PlexoPlugin() override;

    virtual QWidget *getPluginWidget() = 0;
    /// Whether the snapshot document may be applied to the attached device.
    virtual bool checkSnapshot(const QByteArray &snapshot) = 0;
    /// Replaces the content of @p out by a snapshot document.
    virtual void getSnapshot(QByteArray *out) = 0;
    /// Applies a snapshot document; the outcome is told by presetLoadFinished().
    virtual void applySnapshot(QByteArray snapshot) = 0;
    virtual bool getOptionalFlag();
    virtual void handleHostData(QByteArray bytes);
    /// @p index as in QNetworkInterface::index().
    virtual void setNetInterfaceIndex(int index);
    virtual int getNetInterfaceIndex();
    virtual void setFactory(PlexoPluginFactory *factory);
    virtual PlexoPluginFactory *getFactory();
    /// Attaches and wires @p device; may be called again. An earlier, different device is let go: what waits
    /// to be sent to it is dropped, and an answer of it is no longer heard.
    virtual void setDevice(pxDevice *device);
    /// Attaches @p device without following its presence; time-outs then drop the request silently.
    virtual void setDeviceNoConnect(pxDevice *device);
    virtual void setDevices(pxDevices *devices);
    virtual pxDevice *getDevice();
    virtual pxDevices *getDevices();
    /// Empty without a device.
    virtual QString getDeviceName();
    /// Null without a device.
    virtual QHostAddress getDeviceAddress();
    virtual bool isDevicePresent();
    virtual void loadPreset(int preset);
    virtual void savePreset(int preset);
    /// Queues a command, ahead of all queries. @p persistentData: it changes stored device settings.
    virtual void queueVelmarAsciiMsg(QString dev_name, QByteArray bytes, bool persistentData);
    virtual void queueVelmarAsciiQueryMsg(QString dev_name, QByteArray bytes);
    /// Sends past the queues; nothing is awaited. Does nothing without a device.
    virtual void sendVelmarAsciiMsgDirect(QString dev_name, QByteArray bytes);
    /// Reply time-out of both sides, in milliseconds; takes effect with the next request.
    virtual void setVelmarAsciiTimeout(int ms);
    virtual int getVelmarAsciiTimeout();
    /// The text side's time-out timer, owned by the plugin.
    virtual QTimer *getVelmarAsciiTimer();
    virtual void queueVelmarAES67Msg(QString dev_name, QByteArray bytes);
    virtual void queueVelmarAES67QueryMsg(QString dev_name, QByteArray bytes);
    virtual void setSettingsChanged(bool changed);
    /// Always false while the device is absent.
    virtual bool getSettingsChanged();
    virtual void setPluginFlag(bool flag);
    virtual bool getPluginFlag();
    /// Whether the device's feature level reaches the host's threshold for the factory's key.
    virtual bool deviceMeetsThreshold();

    /// Whether text queries wait to be sent; the one in flight does not count.
    bool hasWaitingQueries() const { return m_text.hasQueries(); }
    /// Text requests that wait for a reply or to be sent.
    int waitingRequests() const { return m_text.waitingRequests(); }
    /// Whether the text request in flight is a query.
    bool isQueryInFlight() const { return m_text.isQueryInFlight(); }
    /// Takes back the text queries that wait to be sent. Commands stay, and so does the request in flight.
    void withdrawQueries() { m_text.dropQueries(); }

public slots:
    virtual void handleVelmarAsciiRequestTimeout();
    virtual void handleVelmarAES67RequestTimeout();
    virtual void devicePresenceChanged();
    virtual void deviceDataChanged();
    virtual void recvVelmarAsciiMsg(QString dev_name, QByteArray bytes);
    virtual void recvAES67Config(QString dev_name, QByteArray bytes);
    virtual void recvAES67Status(QString dev_name, QByteArray bytes);
    virtual void applyAES67Config(QString dev_name);
    virtual void handleMetering(QString dev_name, QVector<quint8> inputs, QVector<quint8> outputs);
    virtual void processVelmarAsciiPendRequests();
    virtual void retryVelmarAsciiPendingRequest();
    virtual void clearVelmarAsciiPendingRequest();
    virtual void processVelmarAES67PendRequests();
    virtual void retryVelmarAES67PendingRequest();
    virtual void clearVelmarAES67PendingRequest();
    virtual void emitLogData(QString str);
    virtual void setDebugFromFramework(bool debug);
    virtual bool getDebugFromFramework();
    virtual bool getNoConnectFlag();

signals:
    void pluginRequestClose();
    void deviceChanged();
    void devicesChanged();
    void deviceAvailabilityChanged();
    void sendVelmarAsciiMsg(QString dev_name, pxDevice::e_dev_type, QByteArray);
    void sendVelmarAsciiMsgNoWait(QString dev_name, pxDevice::e_dev_type, QByteArray);
    void sendVelmarAES67Msg(QString dev_name, pxDevice::e_dev_type, QByteArray);
    void danteReboot(QString devName);
    void danteUpdateVer(pxDevice *dev, QString file, uint len, QString addr, qulonglong port);
    void stopVelmarCommands(QString dev_name, bool);
    void updateGuiData();
    void presetSave();
    void presetLoadFinished(bool);
    void updateMainWindowStatus(QString);
    void updatePluginStatus(QString, bool);
    void addDevice(QString);
    void removeDevice(QString);
    void logData(QString);
    void frameworkDebug();
    void subScribeMetering(QString);
    void unSubScribeMetering(QString);
    void netInterfaceChanged();
    void setPluginCannotClose(bool);
    void setPluginCanOnlyBeClosedByPlugin(bool);
    void sendVelmarAsciiMsgTimeout();
    void AES67StreamsChanged();
    void switchToDeviceView();
    void mac_is_alive(QString, uint, QString);
    void block_close_event(bool);
    void getPlugin(QString model);
    void openChildPlugin(PlexoPluginFactory *factory);
    void setCairnConnection();
    void sendCairnMessage(QByteArray);
    void recvCairnMessage(QByteArray);

protected:
    /// The editor that getPluginWidget() returns. Set and destroyed by the derived plugin.
    QPointer<QWidget> m_editorWindow;

private:
    void attach(pxDevice *device);
    void logMessage(const QString &heading, const QString &dev_name, const QByteArray &bytes);
    void logRequest(const QString &dev_name, const QByteArray &bytes, RequestChannel::Kind kind);
    void handleTextAnswer(const QByteArray &bytes);
    void reportPresetAnswer(const QString &text);
    void askAfterTimeout(RequestChannel &channel);
    bool tellOfLoss();

    PlexoPluginFactory *m_factory = nullptr;
    int m_netInterfaceIndex = 0;
    QPointer<pxDevice> m_device;
    /// Exists as long as one device stays attached: a QPointer to it tells, after a signal or a box, whether
    /// what was asked or told still concerns this plugin and its device.
    std::unique_ptr<QObject> m_attachment = std::make_unique<QObject>();
    QPointer<pxDevices> m_devices;
    RequestChannel m_text{this};
    RequestChannel m_aes67{this};
    bool m_settingsChanged = false;
    bool m_pluginFlag = false;
    bool m_debugFromFramework = false;
    bool m_noConnect = false;
};
