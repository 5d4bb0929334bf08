#include "host/plexo_plugin_factory.h"
#include "tests/host/bare_plugin.h"
#include "tests/support/fingerprint.h"

#include <QMetaProperty>
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

} // namespace

/// What hosts and plugins that were built apart agree on.
class HostInterfaceTest : public QObject
{
    Q_OBJECT

private slots:
    void keepsSignalsAndSlotsInOrder()
    {
        const QMetaObject &meta = PlexoPlugin::staticMetaObject;
        QCOMPARE(support::fingerprint(&meta), QByteArray("550c2ac4b2ee66922999f931f60d5c25"));
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
        QCOMPARE(pxDevice::versionFromText(QStringLiteral("1.2.3")), 1002003u);
        QCOMPARE(pxDevice::versionToText(4294967295u), QStringLiteral("v4294.967.295"));
        for (const char *bad : {"4294.967.296", "v1.2.3", "1.2", "1.2.3.4", "1.1000.0", "-1.2.3", ""})
            QVERIFY2(pxDevice::versionFromText(QString::fromLatin1(bad)) == 0, bad);
    }
};

QTEST_MAIN(HostInterfaceTest)
#include "tst_host_interface.moc"
