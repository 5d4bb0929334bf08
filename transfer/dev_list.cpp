#include "transfer/dev_list.h"

DevList::DevList(QObject *parent)
    : QAbstractListModel(parent)
    , m_icon(QStringLiteral(":/images/checked_white.png"))
{
}

void DevList::addDevice(const QString &name)
{
    beginResetModel();
    m_progress.insert(name, 0);
    endResetModel();
}

void DevList::setProgress(const QString &name, int percent)
{
    const auto row = m_progress.find(name);
    if (row == m_progress.end() || row.value() == percent)
        return;
    row.value() = percent;
    const QModelIndex changed = index(int(std::distance(m_progress.begin(), row)), ProgressColumn);
    emit dataChanged(changed, changed);
}

int DevList::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : m_progress.size();
}

int DevList::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(ColumnCount);
}

QVariant DevList::data(const QModelIndex &index, int role) const
{
    if (!index.isValid())
        return {};
    const auto row = std::next(m_progress.begin(), index.row());
    if (index.column() == IconColumn && role == Qt::DecorationRole)
        return m_icon;
    if (index.column() == NameColumn && role == Qt::DisplayRole)
        return row.key();
    if (index.column() == ProgressColumn && role == ProgressRole)
        return row.value();
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
