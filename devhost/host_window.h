#pragma once

#include <QMainWindow>

class QAction;
class QComboBox;
class QLabel;
class QMenu;
class QToolBar;

namespace devhost {

class DeviceTableModel;
class DeviceView;
class EditorSession;
class Host;
class KnownDevice;
class LogPanel;
class NoticeBar;
class SimulatedDevice;
class SnapshotDialogs;

/// The host's window: devices above, communication log below, and the actions on the selected device.
class HostWindow : public QMainWindow
{
    Q_OBJECT

public:
    /// @p host is not owned and outlives the window. Snapshot dialogs begin in @p snapshotFolder.
    HostWindow(Host *host, const QString &snapshotFolder);

signals:
    /// The user has closed the window, and with it every editor.
    void closed();

protected:
    void closeEvent(QCloseEvent *event) override;

private:
    // Layout
    QWidget *createDevicePart();
    void setUpStatusBar();
    void setUpConnections();

    // Menus and tool bar (host_window_actions.cpp)
    void createActions();
    void fillDeviceMenu(QMenu *menu);
    void fillPresetMenu(QMenu *menu, const QString &tip, bool store);
    void fillFaultMenu();
    void createToolBar();
    void addMenuButton(QToolBar *bar, QMenu *menu, const QString &text);
    QAction *addAction(QMenu *menu, const QString &text, const QKeySequence &keys, const QString &tip,
                       void (HostWindow::*slot)());
    void fillInterfaceChooser();

    // What the actions do
    void openSelected();
    void closeSelected();
    void saveSnapshot();
    void loadSnapshot();
    void usePreset(int number, bool store);
    void applyFaults(const QString &text, const QStringList &arguments);
    void useInterface(const QString &name);
    void showPlugins();
    void showUploadAdvice();
    void open(KnownDevice *device);
    EditorSession *selectedSession() const;
    SimulatedDevice *selectedSimulated() const;

    // Keeping the window true
    void refreshActions();
    void refreshCounts();
    void showInterface();
    void showDeviceList(const QString &deviceName);
    void showStatus(const QString &text, bool highlight);

    Host *m_host;
    DeviceTableModel *m_model;
    DeviceView *m_devices;
    LogPanel *m_log;
    NoticeBar *m_notice;
    SnapshotDialogs *m_snapshots;
    QComboBox *m_interfaces;
    QLabel *m_status;
    QLabel *m_counts;
    QAction *m_open = nullptr;
    QList<QAction *> m_editorActions; ///< those that need an open editor
    QMenu *m_deviceMenu = nullptr;
    QMenu *m_storeMenu = nullptr;
    QMenu *m_recallMenu = nullptr;
    QMenu *m_faultMenu = nullptr;
};

} // namespace devhost
