#pragma once

#include <QMainWindow>
#include <QTimer>

class QAction;
class QComboBox;
class QLabel;
class QMenu;
class QToolBar;

namespace devhost {

class DeviceTableModel;
class DeviceView;
class EditorSession;
class FaultPanel;
class Host;
class KnownDevice;
class LogPanel;
class NoticeBar;
class SimulatedDevice;
class SnapshotDialogs;
class WindowMemory;

/// The host's window: devices above, communication log below, and the actions on the selected device.
class HostWindow : public QMainWindow
{
    Q_OBJECT

public:
    /// @p host and @p memory are not owned and outlive the window. Snapshot dialogs begin in @p
    /// snapshotFolder.
    HostWindow(Host *host, WindowMemory *memory, const QString &snapshotFolder);

signals:
    /// The user has closed the window, and with it every editor.
    void closed();

protected:
    void closeEvent(QCloseEvent *event) override;

private:
    // Layout
    QWidget *createDevicePart();
    void fillInterfaceChooser();
    void setUpStatusBar();
    void setUpConnections();
    void setUpMemory();

    // Menus and tool bar (host_window_actions.cpp)
    void createMenus();
    void fillLogMenu(QMenu *menu);
    void fillDeviceMenu(QMenu *menu);
    void fillPresetMenu(QMenu *menu, const QString &tip, bool store);
    void createContextMenu();
    void createToolBar();
    void addMenuButton(QToolBar *bar, QMenu *menu, const QIcon &icon, const QString &text);
    QAction *addAction(QMenu *menu, const QString &text, const QKeySequence &keys, const QString &tip,
                       void (HostWindow::*slot)());

    // What the actions do
    void openSelected();
    void closeSelected();
    void saveSnapshot();
    void loadSnapshot();
    void usePreset(int number, bool store);
    bool askToStore(const EditorSession &session, int number);
    void showFaults();
    void useInterface(const QString &name);
    void showSelectedRefusals();
    void reopen(const QString &deviceName);
    void open(KnownDevice *device);
    void restorePages(EditorSession *session);
    EditorSession *selectedSession() const;
    SimulatedDevice *selectedSimulated() const;

    // Keeping the window true
    void refreshActions();
    void refreshCounts();
    void showRefusals(const QString &deviceName);
    void showInterface();
    void showDeviceList(const QString &deviceName);
    void showStatus(const QString &text, bool highlight);

    Host *m_host;
    WindowMemory *m_memory;
    DeviceTableModel *m_model;
    DeviceView *m_devices;
    LogPanel *m_log;
    NoticeBar *m_notice;
    SnapshotDialogs *m_snapshots;
    QComboBox *m_interfaces;
    QLabel *m_status;
    QTimer m_statusEnd; ///< a status text goes after a while
    QLabel *m_counts;
    QStringList m_toReopen; ///< devices whose editors were open when the host last ended
    QAction *m_open = nullptr;
    QAction *m_refusals = nullptr;
    QList<QAction *> m_editorActions; ///< those that need an open editor
    QMenu *m_deviceMenu = nullptr;
    QMenu *m_storeMenu = nullptr;
    QMenu *m_recallMenu = nullptr;
    QAction *m_faults = nullptr;
    FaultPanel *m_faultPanel;
};

} // namespace devhost
