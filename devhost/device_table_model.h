#pragma once

#include <QAbstractTableModel>

namespace devhost {

class Host;
class KnownDevice;

/// The known devices as a table, each with its presence and what its plugin says.
class DeviceTableModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    enum Column { Presence, Name, Address, Mac, Model, Version, Status, ColumnCount };

    /// @p host is not owned.
    explicit DeviceTableModel(Host *host, QObject *parent = nullptr);

    /// Null for an invalid index.
    KnownDevice *deviceAt(const QModelIndex &index) const;

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    void addDevice(KnownDevice *device);
    void removeDevice(KnownDevice *device);
    /// The first row whose name is not less than @p name.
    int rowOf(const QString &name) const;
    void refresh(const QString &deviceName);
    QString statusOf(const KnownDevice &device) const;
    /// With what the host has to say about it before what the plugin says.
    QString statusWithMarks(const KnownDevice &device) const;
    QVariant markOf(const KnownDevice &device, int column) const;
    QString shown(const KnownDevice &device, int column) const;
    QVariant colorOf(const KnownDevice &device, int column) const;

    Host *m_host;
    QList<KnownDevice *> m_devices;
};

} // namespace devhost
