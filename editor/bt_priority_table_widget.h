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

    /// Makes the rows those of "list_size" and "list" of the Bluetooth status, whatever the user has ticked;
    /// rows without an entry are blank.
    void showStatus(const QJsonObject &status);
    bool isProtected(int row) const;

signals:
    void priorityChanged();

protected:
    void showEvent(QShowEvent *event) override;

private:
    void fillRow(int row, const QJsonObject &phone);

    QString m_deviceName;
};
