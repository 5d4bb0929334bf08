#pragma once

#include <QAbstractListModel>
#include <QIcon>
#include <QMap>

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

    /// Of the progress column: per cent, an int.
    static constexpr int ProgressRole = Qt::UserRole;

    explicit DevList(QObject *parent = nullptr);

    /// Resets the model. A name that is listed already starts anew.
    void addDevice(const QString &name);

    /// Does nothing for a name that is not listed.
    void setProgress(const QString &name, int percent);

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;

private:
    QMap<QString, int> m_progress; ///< per cent, by the device's name
    QIcon m_icon;
};
