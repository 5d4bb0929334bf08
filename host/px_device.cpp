#include "host/px_device.h"

#include <QPointer>
#include <QRegularExpression>

#include <limits>

namespace {

constexpr uint MajorUnit = 1000000;
constexpr uint MinorUnit = 1000;

} // namespace

pxDevice::pxDevice(QObject *parent)
    : QObject(parent)
{
    qRegisterMetaType<pxDevice::e_dev_type>("pxDevice::e_dev_type");
}

QString pxDevice::versionToText(uint version)
{
    return QStringLiteral("v%1.%2.%3")
        .arg(version / MajorUnit)
        .arg(version / MinorUnit % 1000)
        .arg(version % MinorUnit);
}

uint pxDevice::versionFromText(const QString &text)
{
    static const QRegularExpression pattern(QStringLiteral("\\A(\\d{1,4})\\.(\\d{1,3})\\.(\\d{1,3})\\z"));
    const QRegularExpressionMatch match = pattern.match(text);
    if (!match.hasMatch())
        return 0;
    const qulonglong version = match.captured(1).toULongLong() * MajorUnit
        + match.captured(2).toUInt() * MinorUnit + match.captured(3).toUInt();
    return version > std::numeric_limits<uint>::max() ? 0 : uint(version);
}

template <typename T>
void pxDevice::store(T &field, const T &value)
{
    if (field == value)
        return;
    field = value;
    emit DataChanged();
}

void pxDevice::setName(const QString &name)
{
    store(m_name, name);
}

void pxDevice::setType(e_dev_type type)
{
    store(m_type, type);
}

void pxDevice::setIpAddress(const QHostAddress &address)
{
    store(m_ipAddress, address);
}

void pxDevice::setMacAddress(const QString &mac)
{
    store(m_macAddress, mac);
}

void pxDevice::setProductName(const QString &product)
{
    store(m_productName, product);
}

void pxDevice::setFirmwareVersion(uint version)
{
    store(m_firmwareVersion, version);
}

void pxDevice::setFeatureLevel(uint level)
{
    store(m_featureLevel, level);
}

void pxDevice::setPresent(bool present)
{
    if (m_present == present)
        return;
    m_present = present;
    const QPointer<pxDevice> alive(this);
    emit PresenceChanged();
    if (alive && m_present && present)
        emit isAlive(m_name);
}
