#pragma once

#include <QDialog>
#include <QJsonObject>
#include <QScopedPointer>

#include <optional>

namespace Ui {
class BtPriorityPairingDialog;
}

/// Lets the user protect paired phones from being forgotten. It lives as long as its parent window and only
/// ever hides; while it is hidden it follows the device.
class BtPriorityPairingDialog : public QDialog
{
    Q_OBJECT

public:
    explicit BtPriorityPairingDialog(const QString &deviceName, QWidget *parent = nullptr);
    ~BtPriorityPairingDialog() override;

    void setDeviceName(const QString &name);
    /// Fills the table from the "value" of the Bluetooth status.
    void showStatus(const QJsonObject &status);

signals:
    void sendVelmarAsciiSetRequest(QString devname, QByteArray bytes, bool persistentData = false);

private slots:
    void on_buttonBox_rejected();
    void on_buttonBox_accepted();

protected:
    void closeEvent(QCloseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void showEvent(QShowEvent *event) override;

private:
    QScopedPointer<Ui::BtPriorityPairingDialog> ui;
    QString m_deviceName;
    std::optional<QJsonObject> m_shown; ///< what the table shows for sure; none once the user may have ticked
};
