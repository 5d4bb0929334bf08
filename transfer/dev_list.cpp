#include "transfer/dev_list.h"

#include <QColor>

DevList::DevList(QObject *parent)
    : QAbstractListModel(parent)
    , m_icon(QStringLiteral(":/images/checked_white.png"))
{
}

void DevList::addDevice(const QString &name)
{
    beginResetModel();
    m_devices.insert(name, QSharedPointer<UpdateDev>::create());
    endResetModel();
}

UpdateDev *DevList::device(const QString &name) const
{
    return m_devices.value(name).data();
}

UpdateDev *DevList::deviceAt(int row) const
{
    if (row < 0 || row >= m_devices.size())
        return nullptr;
    return std::next(m_devices.cbegin(), row).value().data();
}

int DevList::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : m_devices.size();
}

int DevList::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(ColumnCount);
}

QVariant DevList::data(const QModelIndex &index, int role) const
{
    const UpdateDev *device = deviceAt(index.row());
    if (!device)
        return {};
    switch (index.column()) {
    case IconColumn:
        return role == Qt::DecorationRole ? QVariant(m_icon) : QVariant();
    case NameColumn:
        return nameData(index.row(), role);
    case ProgressColumn:
        return role == Qt::AccessibleTextRole ? QVariant(tr("%1 %").arg(device->progress())) : QVariant();
    default:
        return {};
    }
}

QVariant DevList::nameData(int row, int role) const
{
    if (role == Qt::DisplayRole)
        return std::next(m_devices.cbegin(), row).key();
    if (role == Qt::ForegroundRole && deviceAt(row)->state() == UpdateDev::Alarm)
        return QColor(Qt::red);
    return {};
}

QVariant DevList::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return {};
    switch (section) {
    case NameColumn:
        return tr("Device Name");
    case ProgressColumn:
        return tr("Progress");
    default:
        return {};
    }
}
