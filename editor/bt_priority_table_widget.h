#pragma once

#include <QJsonObject>
#include <QTableWidget>

/// One row per paired phone: a tick that protects it with its MAC address, and its name.
class BtPriorityTableWidget : public QTableWidget
{
    Q_OBJECT

public:
    explicit BtPriorityTableWidget(QWidget *parent = nullptr);

    void setDeviceName(const QString &name) { m_deviceName = name; }
    QString deviceName() const { return m_deviceName; }

    /// Rebuilds the rows from "list_size" and "list" of the Bluetooth status; rows without an entry are
    /// blank.
    void showStatus(const QJsonObject &status);
    bool isProtected(int row) const;

signals:
    void priorityChanged();

private:
    void fillRow(int row, const QJsonObject &phone);

    QString m_deviceName;
};
