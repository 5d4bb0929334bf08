#include "devhost/device_table_model.h"

#include "devhost/host.h"
#include "devhost/icons.h"
#include "devhost/known_device.h"
#include "devhost/look.h"
#include "devhost/plain_text.h"

#include <QIcon>
#include <QPainter>
#include <QPixmap>

#include <algorithm>

namespace devhost {

namespace {

// A filled dot or a ring, so that presence is told by shape as well as by colour.
QPixmap presenceDot(bool present)
{
    constexpr int size = 24;
    QPixmap dot(size, size);
    dot.fill(Qt::transparent);
    dot.setDevicePixelRatio(2);
    QPainter painter(&dot);
    painter.setRenderHint(QPainter::Antialiasing);
    const QColor color = lookColor(present ? "present" : "lost");
    painter.setPen(QPen(color, 1.6));
    painter.setBrush(present ? QBrush(color) : QBrush(Qt::NoBrush));
    painter.drawEllipse(QRectF(1.5, 1.5, 9, 9));
    return dot;
}

// The same dot for every state of its row: a style would tint it where the row is selected.
QIcon presenceIcon(bool present)
{
    const QPixmap dot = presenceDot(present);
    QIcon icon(dot);
    icon.addPixmap(dot, QIcon::Selected);
    return icon;
}

} // namespace

DeviceTableModel::DeviceTableModel(Host *host, QObject *parent)
    : QAbstractTableModel(parent)
    , m_host(host)
{
    connect(host->finder(), &DeviceFinder::found, this, &DeviceTableModel::addDevice);
    connect(host->finder(), &DeviceFinder::forgotten, this, &DeviceTableModel::removeDevice);
    connect(host->sessions(), &EditorSessions::opened, this, [this](EditorSession *session) {
        const QString name = session->deviceName();
        connect(session, &EditorSession::statusChanged, this, [this, name] { refresh(name); });
        refresh(name);
    });
    connect(host->sessions(), &EditorSessions::closed, this, &DeviceTableModel::refresh);
    connect(host->simulated(), &SimulatedDevices::changed, this, &DeviceTableModel::refresh);
    connect(host->refusals(), &Refusals::changed, this, &DeviceTableModel::refresh);
}

// By name, so that a device is found in the same place each time.
int DeviceTableModel::rowOf(const QString &name) const
{
    const auto at = std::lower_bound(
        m_devices.cbegin(), m_devices.cend(), name,
        [](const KnownDevice *device, const QString &wanted) { return device->name() < wanted; });
    return int(at - m_devices.cbegin());
}

void DeviceTableModel::addDevice(KnownDevice *device)
{
    const int row = rowOf(device->name());
    beginInsertRows({}, row, row);
    m_devices.insert(row, device);
    endInsertRows();
    const auto update = [this, device] { refresh(device->name()); };
    connect(device, &pxDevice::PresenceChanged, this, update);
    connect(device, &pxDevice::DataChanged, this, update);
}

void DeviceTableModel::removeDevice(KnownDevice *device)
{
    const int row = rowOf(device->name());
    beginRemoveRows({}, row, row);
    m_devices.removeAt(row);
    endRemoveRows();
    disconnect(device, nullptr, this, nullptr);
}

void DeviceTableModel::refresh(const QString &deviceName)
{
    const int row = rowOf(deviceName);
    emit dataChanged(index(row, 0), index(row, ColumnCount - 1));
}

KnownDevice *DeviceTableModel::deviceAt(const QModelIndex &index) const
{
    return index.isValid() ? m_devices.value(index.row()) : nullptr;
}

int DeviceTableModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : m_devices.size();
}

int DeviceTableModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : ColumnCount;
}

QString DeviceTableModel::statusOf(const KnownDevice &device) const
{
    const EditorSession *session = m_host->sessions()->session(device.name());
    if (session && !device.isPresent())
        return tr("Answer the message of its editor");
    if (session)
        return session->status().isEmpty() ? tr("Editor open") : session->status();
    if (!m_host->registry()->factoryFor(device.model()))
        return tr("No plugin for this model");
    return device.isPresent() ? tr("Double-click to open the editor") : tr("Waiting for its return");
}

QString DeviceTableModel::statusWithMarks(const KnownDevice &device) const
{
    QStringList parts;
    if (const int refused = m_host->refusals()->count(device.name()))
        parts.append(tr("%1 refused").arg(refused));
    const EditorSession *session = m_host->sessions()->session(device.name());
    if (session && !session->hint().isEmpty())
        parts.append(session->hint());
    const SimulatedDevice *simulated = m_host->simulated()->device(device.name());
    if (simulated && !simulated->summary().isEmpty())
        parts.append(tr("Fault: %1").arg(simulated->summary()));
    return (parts << statusOf(device)).join(QStringLiteral("  \u00b7  "));
}

QString DeviceTableModel::shown(const KnownDevice &device, int column) const
{
    switch (column) {
    case Presence:
        return device.isPresent() ? tr("Present") : tr("Lost");
    case Name:
        return device.name();
    case Address:
        return device.ipAddress().toString();
    case Mac:
        return device.macAddress();
    case Model:
        return QStringLiteral("%1 (%2)").arg(device.productName(), device.model());
    case Version:
        return pxDevice::versionToText(device.firmwareVersion());
    default:
        return statusWithMarks(device);
    }
}

QVariant DeviceTableModel::markOf(const KnownDevice &device, int column) const
{
    if (column == Presence)
        return presenceIcon(device.isPresent());
    const bool refused = column == Status && m_host->refusals()->count(device.name()) > 0;
    return refused ? QVariant(drawnIcon(Picture::Refused)) : QVariant();
}

QVariant DeviceTableModel::colorOf(const KnownDevice &device, int column) const
{
    if (column == Presence)
        return lookColor(device.isPresent() ? "present" : "lost");
    if (column == Status && m_host->refusals()->count(device.name()) > 0)
        return lookColor("refused");
    const EditorSession *session = m_host->sessions()->session(device.name());
    if (column == Status && session && session->isStatusHighlighted())
        return lookColor("changed");
    const bool quiet = !device.isPresent() || (column == Status && !session);
    return quiet ? QVariant(lookColor("lost")) : QVariant();
}

QVariant DeviceTableModel::data(const QModelIndex &index, int role) const
{
    const KnownDevice &device = *deviceAt(index);
    switch (role) {
    case Qt::DisplayRole:
        return shown(device, index.column());
    case Qt::ToolTipRole:
        return plainTip(shown(device, index.column()));
    case Qt::DecorationRole:
        return markOf(device, index.column());
    case Qt::ForegroundRole:
        return colorOf(device, index.column());
    default:
        return QVariant();
    }
}

QVariant DeviceTableModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return QVariant();
    const QString titles[]
        = {tr("Presence"), tr("Name"), tr("Address"), tr("MAC"), tr("Model"), tr("Version"), tr("Status")};
    return titles[section];
}

} // namespace devhost
