#pragma once

#include <QTableView>

namespace devhost {

class DeviceTableModel;
class KnownDevice;

/// The list of devices. While it is empty it says what is being waited for.
class DeviceView : public QTableView
{
    Q_OBJECT

public:
    /// @p model is not owned.
    explicit DeviceView(DeviceTableModel *model, QWidget *parent = nullptr);

    /// Shown while no device is listed; the first line is the heading.
    void setEmptyText(const QString &text);
    /// Null when none is selected.
    KnownDevice *selectedDevice() const;
    void select(const KnownDevice *device);

signals:
    void selectionMoved();
    void openRequested(KnownDevice *device);

protected:
    void paintEvent(QPaintEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    void setUpLook();
    void setUpColumns();

    DeviceTableModel *m_model;
    QString m_emptyText;
};

} // namespace devhost
