#pragma once

#include "transfer/update_dev.h"

#include <QAbstractListModel>
#include <QIcon>
#include <QMap>
#include <QSharedPointer>

/// The devices under update, one a row in the order of their names.
class DevList : public QAbstractListModel
{
    Q_OBJECT

public:
    enum Column {
        IconColumn,
        NameColumn,
        ProgressColumn, ///< painted by ProgressBarDelegate
        ColumnCount
    };

    explicit DevList(QObject *parent = nullptr);

    /// Resets the model. A name that is listed already starts anew.
    void addDevice(const QString &name);

    /// Null for an unknown name. Owned by the list.
    UpdateDev *device(const QString &name) const;
    /// Null for a row outside the list. Owned by the list.
    UpdateDev *deviceAt(int row) const;

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;

private:
    QVariant nameData(int row, int role) const;

    QMap<QString, QSharedPointer<UpdateDev>> m_devices;
    QIcon m_icon;
};
