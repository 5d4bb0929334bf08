#include "transfer/update_texts.h"

#include "transfer/tftp_packet.h"

#include <QCoreApplication>
#include <QLocale>
#include <QSysInfo>

namespace updatetexts {

namespace {

QString tr(const char *text)
{
    return QCoreApplication::translate("UpdateDialog", text);
}

QString dataSize(int bytes)
{
    return QLocale().formattedDataSize(bytes, 1);
}

QString permission()
{
    if (QSysInfo::kernelType() != QLatin1String("linux"))
        return tr("Start the application with administrator rights, then load the voice cue again.");
    return tr("Permit it with this command, then load the voice cue again:")
        + QLatin1String("\nsudo sysctl -w net.ipv4.ip_unprivileged_port_start=69");
}

/// Windows keeps no port from ordinary users: there, no access means that another program has it for itself.
bool isTaken(QAbstractSocket::SocketError error)
{
    return error == QAbstractSocket::AddressInUseError
        || (error == QAbstractSocket::SocketAccessError && QSysInfo::kernelType() == QLatin1String("winnt"));
}

} // namespace

QString waiting()
{
    return tr("Waiting for the device to ask for the file.");
}

QString notAskedYet()
{
    return tr(
        "The device has not asked for the file yet. It is still offered; if nothing happens, close this "
        "window, check the network connection and any firewall (UDP port 69), and load the voice cue again.");
}

QString nothingToSend()
{
    return tr("The file is empty or cannot be read. Choose another recording.");
}

QString unplayable(const QString &kind)
{
    return tr("The device cannot play this file: it is %1. Save the recording as a WAV file with one channel "
              "(mono), 16 kHz and 16 bit PCM, then load it again.")
        .arg(kind);
}

QString stranger(const QHostAddress &peer, const QString &deviceName, const QHostAddress &deviceAddress)
{
    return tr("The file goes to %1, which asked for it first. That is not the address of %2, which is %3.")
        .arg(peer.toString(), deviceName, deviceAddress.toString());
}

QString sending(const QHostAddress &peer, int fileSize, int percent)
{
    return tr("Sending %1 to %2: %3 %").arg(dataSize(fileSize), peer.toString()).arg(percent);
}

QString finished(int fileSize)
{
    return tr("Finished: the device has fetched all %1.").arg(dataSize(fileSize));
}

QString finishedUnplayable(int fileSize)
{
    return tr("The device has fetched all %1, but cannot play them.").arg(dataSize(fileSize));
}

QString finishedWithStranger(const QHostAddress &peer)
{
    return tr("%1 has fetched the file. Unless that is another address of the device, the device has got "
              "nothing: "
              "end the program there that asks for files, then load the voice cue again.")
        .arg(peer.toString());
}

QString failed(VmTftp::Failure failure)
{
    switch (failure) {
    case VmTftp::Failure::TooLong:
        return tr("Failed: the file is too long for a transfer, which carries at most %1. Choose a shorter "
                  "recording.")
            .arg(dataSize(tftp::MaxBlocks * tftp::DeviceBlockSize - 1));
    case VmTftp::Failure::NotSent:
        return tr("Failed: the network did not take a packet for the device. Check the network connection, "
                  "then load the voice cue again.");
    case VmTftp::Failure::Refused:
        return tr(
            "Failed: the device refused the file. Check that it is a WAV recording of the kind the device "
            "plays (mono, 16 kHz, 16 bit), then load it again.");
    case VmTftp::Failure::NoAnswer:
    case VmTftp::Failure::None:
        break;
    }
    return tr(
        "Failed: the device stopped answering. Check its network connection, then load the voice cue again.");
}

QString portClosed(QAbstractSocket::SocketError error, const QString &systemText)
{
    if (isTaken(error))
        return tr(
            "The device cannot fetch the file: UDP port 69 is in use by another voice cue update or another "
            "TFTP server. End that one, then load the voice cue again.");
    if (error == QAbstractSocket::SocketAccessError)
        return tr("The device cannot fetch the file: this user may not open UDP port 69.") + QLatin1Char(' ')
            + permission();
    return tr("The device cannot fetch the file: UDP port 69 cannot be opened (%1).").arg(systemText);
}

} // namespace updatetexts
