#include "devhost/message_recorder.h"

#include "devhost/device_transport.h"
#include "devhost/message_line.h"

namespace devhost {

MessageRecorder::MessageRecorder(const DeviceTransport *transport, QObject *parent)
    : QObject(parent)
{
    connect(transport, &DeviceTransport::sent, this,
            [this](const QString &device, const QByteArray &bytes) { write("tx", device, bytes); });
    connect(transport, &DeviceTransport::received, this,
            [this](const QString &device, const QByteArray &bytes) { write("rx", device, bytes); });
}

QString MessageRecorder::start(const QString &path)
{
    m_clock.start();
    return m_file.open(path, QIODevice::Truncate);
}

void MessageRecorder::write(const char *direction, const QString &device, const QByteArray &message)
{
    if (m_file.isOpen())
        m_file.write(messageLine(m_clock.elapsed(), direction, device, message));
}

} // namespace devhost
