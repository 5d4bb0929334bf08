#include "devhost/snapshot_dialogs.h"

#include "devhost/editor_session.h"
#include "devhost/known_device.h"
#include "devhost/overwrite_dialog.h"
#include "devhost/plain_text.h"
#include "devhost/whole_file.h"
#include "devhost/window_memory.h"

#include <QDateTime>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QPointer>
#include <QRegularExpression>

namespace devhost {

namespace {

const QLatin1String FolderKey("snapshots/folder");

QString fileFilter()
{
    return SnapshotDialogs::tr("Snapshots (*.xml);;All files (*)");
}

QString suggestedName(const EditorSession &session)
{
    // What a file system reads as a folder, a drive or a hidden file, or refuses.
    static const QRegularExpression special(QStringLiteral("[/\\\\:*?\"<>|]|^\\."));
    return session.deviceName().replace(special, QStringLiteral("-"))
        + QDateTime::currentDateTime().toString(QStringLiteral(" yyyy-MM-dd hh-mm-ss"))
        + QStringLiteral(".xml");
}

} // namespace

SnapshotDialogs::SnapshotDialogs(const QString &folder, WindowMemory *memory, QWidget *window)
    : QObject(window)
    , m_memory(memory)
    , m_window(window)
    , m_folder(folder.isEmpty() ? memory->folder(FolderKey) : folder)
{
}

void SnapshotDialogs::goToFolderOf(const QString &file)
{
    m_folder = QFileInfo(file).path();
    m_memory->keepFolderOf(FolderKey, file);
}

void SnapshotDialogs::save(EditorSession *session)
{
    // What the editor shows when the user asks, not what a device may have changed to meanwhile.
    const QByteArray snapshot = session->snapshot();
    const QString path
        = QFileDialog::getSaveFileName(m_window, tr("Save Snapshot of %1").arg(session->deviceName()),
                                       QDir(m_folder).filePath(suggestedName(*session)), fileFilter());
    if (path.isEmpty())
        return;
    goToFolderOf(path);
    const QString error = writeWholeFile(path, snapshot);
    if (error.isEmpty())
        emit saved(tr("The snapshot was saved to %1.").arg(QDir::toNativeSeparators(path)));
    else
        warn(error);
}

void SnapshotDialogs::load(EditorSession *session)
{
    const QPointer<EditorSession> alive(session);
    const QString path = QFileDialog::getOpenFileName(
        m_window, tr("Load Snapshot into %1").arg(session->deviceName()), m_folder, fileFilter());
    if (path.isEmpty() || !alive)
        return;
    goToFolderOf(path);
    const FileContent content = readWholeFile(path, LargestSnapshot);
    if (!content.error.isEmpty()) {
        warn(content.error);
    } else if (!session->acceptsSnapshot(content.bytes)) {
        warn(tr("%1 does not fit %2: it is damaged, or its product, firmware or file version is another "
                "one. Nothing was changed. Choose a snapshot that was saved from a %3.")
                 .arg(QFileInfo(path).fileName(), session->deviceName(), session->device()->productName()));
    } else if (askToOverwrite(*session, path, content.bytes) && alive) {
        session->applySnapshot(content.bytes);
    }
}

void SnapshotDialogs::warn(const QString &sentence)
{
    PlainBox(QMessageBox::Warning, tr("Snapshot"), sentence, QMessageBox::Ok, m_window).exec();
}

bool SnapshotDialogs::askToOverwrite(const EditorSession &session, const QString &path,
                                     const QByteArray &snapshot)
{
    OverwriteDialog dialog(
        tr("Overwrite all settings of %1 (%2) with %3?")
            .arg(session.deviceName(), session.device()->ipAddress().toString(), QFileInfo(path).fileName()),
        snapshotChanges(session.snapshot(), snapshot), m_window);
    return dialog.exec() == QDialog::Accepted;
}

} // namespace devhost
