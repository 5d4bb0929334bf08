#include "host/plexo_plugin_factory.h"
#include "host/px_devices.h"
#include "tests/host/bare_plugin.h"

#include <QMetaMethod>
#include <QSignalSpy>
#include <QTest>

#include <cstring>

namespace {

#ifdef __x86_64__
/// Where a virtual operation stands in the table that hosts and plugins built apart have to agree on. The
/// Itanium C++ ABI keeps that, plus one, in the first word of a pointer to a member function.
template <typename Operation>
int tableIndex(Operation operation)
{
    std::ptrdiff_t word = 0;
    std::memcpy(&word, &operation, sizeof word);
    return int((word - 1) / std::ptrdiff_t(sizeof(void *)));
}

template <typename... Operations>
bool followEachOther(Operations... operations)
{
    int last = 0;
    return ((last == 0 || tableIndex(operations) == last + 1 ? (last = tableIndex(operations)) : 0) && ...);
}
#endif

/// Answers only what a threshold needs.
class ThresholdFactory : public PlexoPluginFactory
{
public:
    PlexoPlugin *createPlugin(QWidget *) override { return nullptr; }
    QString getPluginName() override { return {}; }
    QString getVersion() override { return {}; }
    QString getVendorId() override { return {}; }
    QString getVendorName() override { return {}; }
    QString getProductId() override { return {}; }
    QStringList getSupportedModels() override { return {}; }
    void attachDevice(PlexoPlugin *, pxDevices *, pxDevice *) override { }
    QStringList getModelKeywords() override { return {}; }
    QPixmap getIcon() override { return {}; }
    int reservedNumber() override { return 0; }
    QString getVersionFull() override { return {}; }
    QString getThresholdKey() override { return key; }

    QString key = QStringLiteral("FEATURE");
};

} // namespace

/// What hosts and plugins that were built apart agree on.
class HostInterfaceTest : public QObject
{
    Q_OBJECT

private slots:
    void keepsSignalsAndSlotsInOrder()
    {
        const QMetaObject &meta = PlexoPlugin::staticMetaObject;
        QByteArray signatures;
        for (int i = meta.methodOffset(); i < meta.methodCount(); ++i)
            signatures += meta.method(i).methodSignature() + ' ';
        QCOMPARE(
            signatures,
            QByteArray("pluginRequestClose() deviceChanged() devicesChanged() "
                       "deviceAvailabilityChanged() "
                       "sendVelmarAsciiMsg(QString,pxDevice::e_dev_type,QByteArray) "
                       "sendVelmarAsciiMsgNoWait(QString,pxDevice::e_dev_type,QByteArray) "
                       "sendVelmarAES67Msg(QString,pxDevice::e_dev_type,QByteArray) danteReboot(QString) "
                       "danteUpdateVer(pxDevice*,QString,uint,QString,qulonglong) "
                       "stopVelmarCommands(QString,bool) updateGuiData() presetSave() "
                       "presetLoadFinished(bool) updateMainWindowStatus(QString) "
                       "updatePluginStatus(QString,bool) addDevice(QString) removeDevice(QString) "
                       "logData(QString) frameworkDebug() subScribeMetering(QString) "
                       "unSubScribeMetering(QString) netInterfaceChanged() setPluginCannotClose(bool) "
                       "setPluginCanOnlyBeClosedByPlugin(bool) sendVelmarAsciiMsgTimeout() "
                       "AES67StreamsChanged() switchToDeviceView() mac_is_alive(QString,uint,QString) "
                       "block_close_event(bool) getPlugin(QString) openChildPlugin(PlexoPluginFactory*) "
                       "setCairnConnection() sendCairnMessage(QByteArray) recvCairnMessage(QByteArray) "
                       "handleVelmarAsciiRequestTimeout() handleVelmarAES67RequestTimeout() "
                       "devicePresenceChanged() deviceDataChanged() "
                       "recvVelmarAsciiMsg(QString,QByteArray) recvAES67Config(QString,QByteArray) "
                       "recvAES67Status(QString,QByteArray) applyAES67Config(QString) "
                       "handleMetering(QString,QVector<quint8>,QVector<quint8>) "
                       "processVelmarAsciiPendRequests() retryVelmarAsciiPendingRequest() "
                       "clearVelmarAsciiPendingRequest() processVelmarAES67PendRequests() "
                       "retryVelmarAES67PendingRequest() clearVelmarAES67PendingRequest() "
                       "emitLogData(QString) setDebugFromFramework(bool) getDebugFromFramework() "
                       "getNoConnectFlag() "));
        const QMetaProperty present = meta.property(meta.indexOfProperty("devicePresent"));
        QCOMPARE(present.notifySignal().methodSignature(), QByteArray("deviceAvailabilityChanged()"));
    }

    void keepsVirtualOperationsInOrder()
    {
#ifdef __x86_64__
        using P = PlexoPlugin;
        QVERIFY(followEachOther(
            &P::getPluginWidget, &P::checkSnapshot, &P::getSnapshot, &P::applySnapshot, &P::getOptionalFlag,
            &P::handleHostData, &P::setNetInterfaceIndex, &P::getNetInterfaceIndex, &P::setFactory,
            &P::getFactory, &P::setDevice, &P::setDeviceNoConnect, &P::setDevices, &P::getDevice,
            &P::getDevices, &P::getDeviceName, &P::getDeviceAddress, &P::isDevicePresent, &P::loadPreset,
            &P::savePreset, &P::queueVelmarAsciiMsg, &P::queueVelmarAsciiQueryMsg,
            &P::sendVelmarAsciiMsgDirect, &P::setVelmarAsciiTimeout, &P::getVelmarAsciiTimeout,
            &P::getVelmarAsciiTimer, &P::queueVelmarAES67Msg, &P::queueVelmarAES67QueryMsg,
            &P::setSettingsChanged, &P::getSettingsChanged, &P::setPluginFlag, &P::getPluginFlag,
            &P::deviceMeetsThreshold, &P::handleVelmarAsciiRequestTimeout,
            &P::handleVelmarAES67RequestTimeout, &P::devicePresenceChanged, &P::deviceDataChanged,
            &P::recvVelmarAsciiMsg, &P::recvAES67Config, &P::recvAES67Status, &P::applyAES67Config,
            &P::handleMetering, &P::processVelmarAsciiPendRequests, &P::retryVelmarAsciiPendingRequest,
            &P::clearVelmarAsciiPendingRequest, &P::processVelmarAES67PendRequests,
            &P::retryVelmarAES67PendingRequest, &P::clearVelmarAES67PendingRequest, &P::emitLogData,
            &P::setDebugFromFramework, &P::getDebugFromFramework, &P::getNoConnectFlag));
        using F = PlexoPluginFactory;
        QVERIFY(followEachOther(&F::createPlugin, &F::getPluginName, &F::getVersion, &F::getVendorId,
                                &F::getVendorName, &F::getProductId, &F::getSupportedModels, &F::attachDevice,
                                &F::getModelKeywords, &F::getIcon, &F::reservedFlagA, &F::reservedNumber,
                                &F::getVersionFull, &F::reservedValueA, &F::reservedValueB,
                                &F::reservedValueC, &F::reservedValueD, &F::getThresholdKey,
                                &F::reservedFlagB, &F::reservedText));
#else
        QSKIP("The check knows one binary interface only.");
#endif
    }

    void convertsVersions()
    {
        const QHash<QString, uint> versions{{QStringLiteral("1.2.3"), 1002003},
                                            {QStringLiteral("0.0.1"), 1},
                                            {QStringLiteral("1.999.999"), 1999999},
                                            {QStringLiteral("4294.967.295"), 4294967295u}};
        for (auto it = versions.begin(); it != versions.end(); ++it) {
            QCOMPARE(pxDevice::versionFromText(it.key()), it.value());
            QCOMPARE(pxDevice::versionToText(it.value()), QLatin1Char('v') + it.key());
        }
        for (const char *bad : {"4294.967.296", "9999.0.0", "v1.2.3", "1.2", "1.2.3.4", "1.1000.0", "1.2.3\n",
                                " 1.2.3", "-1.2.3", "1..3", ""})
            QVERIFY2(pxDevice::versionFromText(QString::fromLatin1(bad)) == 0, bad);
    }

    void tellsOfChangesOnly()
    {
        pxDevice device;
        const QSignalSpy changed(&device, &pxDevice::DataChanged);
        const QSignalSpy presence(&device, &pxDevice::PresenceChanged);
        const QSignalSpy alive(&device, &pxDevice::isAlive);
        for (int round = 0; round < 2; ++round) {
            device.setName(QStringLiteral("KBX"));
            device.setType(pxDevice::DEV_TYPE_NETWORK);
            device.setIpAddress(QHostAddress(QHostAddress::LocalHost));
            device.setMacAddress(QStringLiteral("02:00:00:00:00:01"));
            device.setProductName(QStringLiteral("TarnKBX"));
            device.setFirmwareVersion(1);
            device.setFeatureLevel(1);
            device.setPresent(true);
        }
        QCOMPARE(changed.size(), 7);
        QCOMPARE(presence.size(), 1);
        device.setPresent(false);
        QCOMPARE(presence.size(), 2);
        QCOMPARE(alive.size(), 1);
        QCOMPARE(alive.constFirst().constFirst().toString(), QStringLiteral("KBX"));
    }

    void listsDevicesWhileTheyLive()
    {
        pxDevices devices;
        const QSignalSpy changed(&devices, &pxDevices::DevicesChanged);
        pxDevice stays;
        {
            pxDevice goes;
            for (pxDevice *device : {&goes, &stays, &stays, static_cast<pxDevice *>(nullptr)})
                devices.add(device);
            QCOMPARE(devices.list(), (QList<pxDevice *>{&goes, &stays}));
        }
        QCOMPARE(devices.list(), QList<pxDevice *>{&stays});
        devices.remove(&stays);
        devices.remove(&stays);
        QCOMPARE(changed.size(), 4);
    }

    void comparesWithTheThreshold()
    {
        HostSide host;
        pxDevices devices;
        ThresholdFactory factory;
        devices.setThreshold(factory.key, 0x80000000u);
        host.device.setFeatureLevel(0x80000000u);
        host.plugin->setFactory(&factory);
        host.plugin->setDevices(&devices);
        QVERIFY(!host.plugin->deviceMeetsThreshold());
        host.run("attach");
        QVERIFY(host.plugin->deviceMeetsThreshold());
        host.device.setFeatureLevel(0x7fffffffu);
        QVERIFY(!host.plugin->deviceMeetsThreshold());
        devices.setThreshold(QStringLiteral("NA"), 0);
        factory.key = QStringLiteral("NA");
        QVERIFY(!host.plugin->deviceMeetsThreshold());
    }
};

QTEST_MAIN(HostInterfaceTest)
#include "tst_host_interface.moc"
