#pragma once

#include "transfer/vm_tftp.h"

#include <QDialog>
#include <QPointer>
#include <QScopedPointer>
#include <QStyle>

class DevList;
class TickDelegate;
class pxDevice;

namespace Ui {
class UpdateDialog;
}

/// Serves one voice cue to the device that asks for it on UDP port 69, and shows how far it has come.
///
/// Run it modally after telling the device where to fetch the file. Closing it, at any time, ends the
/// transfer; destroying it frees the port. Everything that can keep the device from fetching the file is
/// said in words in the dialog, because the protocol itself stays silent about it.
class UpdateDialog : public QDialog
{
    Q_OBJECT

public:
    struct Intervals
    {
        std::chrono::milliseconds start{2000}; ///< before the user reads that the device has not asked yet
        VmTftp::Intervals transfer;
    };

    explicit UpdateDialog(QWidget *parent = nullptr);
    ~UpdateDialog() override;

    /// Before setFile(); for hosts and tests that cannot wait as long as a device may.
    void setIntervals(const Intervals &intervals) { m_intervals = intervals; }

    /// Lists the device by its present name. Not owned, and not used afterwards.
    void setDevice(pxDevice *device);

    /// @param file path or bare name, kept as it is; shown without its folders
    /// @param contents the whole file; the device's request for an empty one ends in the failure message
    void setFile(const QString &file, const QByteArray &contents);

signals:
    void signalTftpDone();

private slots:
    void handleTftpGet();
    void handleProgress(int percent);
    void handleFinished(bool error);
    void handleStartTimeout();
    void handleTimeout();
    void on_update();
    void on_close_pushButton_clicked();

private:
    void setUpTable();
    void listenForRequests();
    void serve(const QHostAddress &peer, quint16 port);
    void releaseTransfer();
    bool isStranger() const;
    void showStatus(const QString &text, QStyle::StandardPixmap icon = QStyle::SP_MessageBoxInformation);
    void warn(const QString &text) { showStatus(text, QStyle::SP_MessageBoxWarning); }
    void addNotice(const QString &text);
    void announce();

    QScopedPointer<Ui::UpdateDialog> m_ui;
    DevList *m_devices; ///< child
    TickDelegate *m_tick; ///< child; of an update that went well
    QPointer<VmTftp> m_transfer; ///< child; null until a device asks
    QUdpSocket m_requests;
    QTimer m_startTimer;
    Intervals m_intervals;
    QString m_deviceName;
    QHostAddress m_deviceAddress; ///< null when it is not known
    QString m_file;
    QByteArray m_data;
    QString m_unplayableKind; ///< empty for a recording that the device plays
    QHostAddress m_peer;
    bool m_ended = false; ///< the outcome is on show; what the transfer says later is not
};
