#pragma once

#include "tests/support/editor_session.h"

#include <QProcess>
#include <QUdpSocket>

namespace support {

/// An editor session whose device is a simulated one in a process of its own, reached over UDP. The script
/// only takes notes.
class LiveDevice : public EditorSession
{
public:
    /// @p number 1 to 9 gives the device a name and an address of its own.
    LiveDevice(PlexoPluginFactory *factory, int number, const QStringList &options = {});
    ~LiveDevice();

    /// Waits for the process, attaches the device, shows the editor and waits until it is live.
    bool goLive();

    /// What the device itself answers to a get, asked past the editor; "value" of the reply.
    QJsonValue ask(const QString &path);

private:
    QProcess m_process;
    QUdpSocket m_socket;
};

} // namespace support
