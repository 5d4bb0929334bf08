#pragma once

#include <QObject>
#include <QString>

class QWidget;

namespace devhost {

class EditorSession;
class WindowMemory;

/// Saves and loads snapshot files with the user: file dialogs, the plugin's check, and the question which
/// device may be overwritten.
class SnapshotDialogs : public QObject
{
    Q_OBJECT

public:
    /// Dialogs belong to @p window and begin in @p folder; when it is empty, where the last one ended, or in
    /// the user's documents. @p memory is not owned.
    SnapshotDialogs(const QString &folder, WindowMemory *memory, QWidget *window);

    /// Saves what the session held when it was asked, even if it ends while the dialog is open.
    void save(EditorSession *session);
    /// Loads nothing when the session ends while a dialog is open.
    void load(EditorSession *session);

signals:
    void saved(const QString &sentence);

private:
    void warn(const QString &sentence);
    void goToFolderOf(const QString &file);
    bool askToOverwrite(const EditorSession &session, const QString &path, const QByteArray &snapshot);

    WindowMemory *m_memory;
    QWidget *m_window;
    QString m_folder;
};

} // namespace devhost
