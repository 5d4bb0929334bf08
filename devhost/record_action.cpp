#include "devhost/record_action.h"

#include "devhost/host.h"
#include "devhost/plain_text.h"
#include "devhost/window_memory.h"

#include <QDateTime>
#include <QDir>
#include <QFileDialog>
#include <QWidget>

namespace devhost {

namespace {

const QLatin1String FolderKey("recordings/folder");

} // namespace

RecordAction::RecordAction(Host *host, WindowMemory *memory, QWidget *window)
    : QAction(window)
    , m_host(host)
    , m_memory(memory)
    , m_window(window)
{
    setObjectName(QStringLiteral("recordSession"));
    setCheckable(true);
    setShortcut(tr("Ctrl+Shift+R"));
    connect(this, &QAction::triggered, this, &RecordAction::change);
    connect(host->recorder(), &SessionRecorder::changed, this, &RecordAction::refresh);
    refresh();
}

void RecordAction::change(bool on)
{
    SessionRecorder *recorder = m_host->recorder();
    if (on) {
        const QString path = askForFile();
        m_host->reportProblem(path.isEmpty() ? QString() : recorder->start(path));
    } else {
        recorder->stop();
        m_host->reportStatus(tr("The session was recorded to %1, %2 lines.")
                                 .arg(QDir::toNativeSeparators(recorder->path()))
                                 .arg(recorder->lines()));
    }
    refresh();
}

QString RecordAction::askForFile() const
{
    const QDir folder(m_memory->folder(FolderKey));
    const QString name
        = QDateTime::currentDateTime().toString(QStringLiteral("'session' yyyy-MM-dd hh-mm-ss'.jsonl'"));
    // A file that is there is never replaced, so there is nothing to confirm.
    QString path = QFileDialog::getSaveFileName(m_window, tr("Record Session"), folder.filePath(name),
                                                tr("Recordings (*.jsonl);;All files (*)"), nullptr,
                                                QFileDialog::DontConfirmOverwrite);
    if (!path.isEmpty())
        m_memory->keepFolderOf(FolderKey, path);
    return path;
}

void RecordAction::refresh()
{
    const bool on = m_host->recorder()->isRecording();
    setChecked(on);
    setText(on ? tr("\u25cf Recording") : tr("Record..."));
    setToolTip(
        on ? plainTip(tr("End the recording in %1 (Ctrl+Shift+R)")
                          .arg(QDir::toNativeSeparators(m_host->recorder()->path())))
           : tr("Keep all messages and levels from now on in a file, which the simulated device can replay "
                "(Ctrl+Shift+R)"));
}

} // namespace devhost
