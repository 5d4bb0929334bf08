#pragma once

#include <QElapsedTimer>
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
    /// Does nothing when no such device is listed.
    void select(const QString &name);
    /// The device of that name is selected at the start if it is there, else the first one.
    void prefer(const QString &name) { m_preferred = name; }

signals:
    void selectionMoved();
    void openRequested(KnownDevice *device);
    /// A menu of what can be done with the selected device is wanted at @p place on the screen.
    void menuRequested(const QPoint &place);

protected:
    void paintEvent(QPaintEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void contextMenuEvent(QContextMenuEvent *event) override;

private:
    void chooseFirst();
    /// -1 when no such device is listed.
    int rowOf(const QString &name) const;
    void showColumnMenu(const QPoint &place);
    void setUpLook();
    void setUpColumns();

    DeviceTableModel *m_model;
    QString m_emptyText;
    QString m_preferred;
    QElapsedTimer m_sinceFirst; ///< device that was listed
    bool m_chosen = false; ///< the user has chosen one
};

} // namespace devhost
