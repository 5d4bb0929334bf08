// Voice cues: switching, playing, and replacing them by a recording.

#include "editor/tarnkbx_main_window.h"

#include "editor/asked_device.h"
#include "editor/voice_cues.h"
#include "host/modal_box.h"
#include "host/plexo_plugin.h"
#include "protocol/paths.h"
#include "transfer/local_address.h"
#include "transfer/update_dialog.h"

#include "ui_main_window.h"

#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QSignalBlocker>
#include <QStandardPaths>
#include <QTimer>

namespace {

bool flag(const QJsonArray &cues, int cue, const char *member)
{
    return json::flag(cues.at(cue).toObject(), member);
}

/// An unreadable file yields empty data, which the update dialog reports when the device asks for it.
QByteArray contentsOf(const QString &name)
{
    QFile file(name);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// The music folder as the system names it, else as it is kept, else home: whichever exists.
QString musicFolder()
{
    const auto music = QStandardPaths::MusicLocation;
    for (const QString &folder :
         {QStandardPaths::displayName(music), QStandardPaths::writableLocation(music)}) {
        if (QFileInfo(folder).isDir())
            return folder;
    }
    return QDir::homePath();
}

QString askForWavFile(QWidget *parent)
{
    // On the heap: the window, and with it the dialog, may be destroyed while it is open.
    QPointer<QFileDialog> dialog(new QFileDialog(parent, TarnKBX_MainWindow::tr("Select WAV File"),
                                                 musicFolder(), TarnKBX_MainWindow::tr("WAV (*.wav)")));
    dialog->setFileMode(QFileDialog::ExistingFile);
    const bool chosen = dialog->exec() == QDialog::Accepted;
    QString file = dialog && chosen ? dialog->selectedFiles().value(0) : QString();
    delete dialog;
    return file;
}

} // namespace

std::array<QCheckBox *, 4> TarnKBX_MainWindow::cueEnableBoxes() const
{
    return {ui->vc_pair_init_en_checkBox, ui->vc_pair_end_en_checkBox, ui->vc_pair_success_en_checkBox,
            ui->vc_connect_failed_en_checkBox};
}

void TarnKBX_MainWindow::showVoiceCueStatus()
{
    const QJsonArray status = m_caches->array(Section::StatusVoiceCue);
    const QJsonArray settings = m_caches->array(Section::VoiceCue);
    const auto boxes = cueEnableBoxes();
    for (int cue = 0; cue < VoiceCueCount; ++cue) {
        QCheckBox *box = boxes[size_t(cue)];
        const QSignalBlocker quiet(box);
        const bool valid = flag(status, cue, "valid");
        box->setChecked(valid && flag(settings, cue, "enable"));
        box->setEnabled(valid);
    }
}

void TarnKBX_MainWindow::showVoiceCueSettings()
{
    const QJsonArray settings = m_caches->array(Section::VoiceCue);
    const auto boxes = cueEnableBoxes();
    for (int cue = 0; cue < VoiceCueCount; ++cue) {
        const QSignalBlocker quiet(boxes[size_t(cue)]);
        boxes[size_t(cue)]->setChecked(flag(settings, cue, "enable"));
    }
}

/// Nothing may come between the download command and the device's own requests.
void TarnKBX_MainWindow::stopForCueLoad()
{
    m_meteringRequestTimer.stop();
    m_statusPollTimer.stop();
    m_droppedForCueLoad = !m_queryFinished;
    if (!m_plugin)
        return;
    m_droppedForCueLoad |= m_plugin->getVelmarAsciiTimer()->isActive();
    m_plugin->clearVelmarAsciiPendingRequest();
}

/// A load that came to nothing must not leave the editor quiet, nor with half of the device read.
void TarnKBX_MainWindow::resumeAfterCueLoad()
{
    if (m_droppedForCueLoad) {
        reloadDevice();
        return;
    }
    if (!m_queryFinished)
        return; // begun meanwhile; its end starts them
    m_meteringRequestTimer.start();
    m_statusPollTimer.start();
}

void TarnKBX_MainWindow::loadUserCue(int cue)
{
    stopForCueLoad();
    const AskedDevice asked(this, m_plugin);
    const QString file = askForWavFile(this);
    if (!asked) // another device is read from the start
        return;
    if (file.isEmpty()) {
        resumeAfterCueLoad();
        return;
    }
    helper_load_user_vc_file(file, VoiceCues[size_t(cue)].id, contentsOf(file));
}

void TarnKBX_MainWindow::loadDefaultCue(int cue)
{
    stopForCueLoad();
    const VoiceCueInfo &info = VoiceCues[size_t(cue)];
    helper_load_user_vc_file(info.defaultFile, info.id,
                             contentsOf(QStringLiteral(":/voice_cue/%1").arg(info.defaultFile)));
}

void TarnKBX_MainWindow::helper_load_user_vc_file(QString file, QString id, QByteArray recording)
{
    if (!m_plugin)
        return;
    const QPointer<TarnKBX_MainWindow> alive(this);
    QPointer<UpdateDialog> dialog(new UpdateDialog);
    connect(this, &QObject::destroyed, dialog, &QDialog::reject);
    dialog->setStyleSheet(styleSheet());
    dialog->setDevice(m_plugin->getDevice());
    dialog->setFile(file, recording);
    const QHostAddress address
        = localAddress(QNetworkInterface::allInterfaces(), m_plugin->getNetInterfaceIndex());
    if (address.isNull()) {
        delete dialog;
        warnNoLocalAddress();
        return;
    }
    sendCommand(path::Download,
                QJsonObject{
                    {QStringLiteral("target"), id},
                    {QStringLiteral("uri"), QStringLiteral("tftp://%1:69/%2").arg(address.toString(), file)},
                });
    dialog->exec();
    delete dialog;
    if (alive)
        reloadDevice();
}

void TarnKBX_MainWindow::warnNoLocalAddress()
{
    const AskedDevice asked(this, m_plugin);
    BoxText box;
    box.title = tr("Voice Cue Update");
    box.text = tr("This computer has no address from which the device could fetch the recording.");
    box.informativeText
        = tr("Give the network interface that the host uses for this device an IPv4 address other "
             "than 127.0.0.1, or choose another interface in the host, and load the cue again.");
    runModalBox(box, this, this);
    if (asked)
        resumeAfterCueLoad();
}
