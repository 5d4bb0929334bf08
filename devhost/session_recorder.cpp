#include "devhost/session_recorder.h"

#include "devhost/device_finder.h"
#include "devhost/device_transport.h"
#include "devhost/known_device.h"
#include "devhost/message_line.h"

#include <QDateTime>
#include <QDir>
#include <QJsonDocument>
#include <QJsonObject>

namespace devhost {

namespace {

QByteArray lineOf(const QJsonObject &object)
{
    return QJsonDocument(object).toJson(QJsonDocument::Compact) + '\n';
}

} // namespace

SessionRecorder::SessionRecorder(const DeviceFinder *finder, QObject *parent)
    : QObject(parent)
    , m_finder(finder)
    , m_levels(finder)
{
    connect(&m_levels, &LevelListener::problem, this, &SessionRecorder::problem);
    connect(&m_levels, &LevelListener::levels, this,
            [this](const QString &device, const QByteArray &datagram) {
                meet(device);
                write(bytesLine(m_clock.elapsed(), "levels", device, datagram));
            });
}

void SessionRecorder::follow(const DeviceTransport *transport)
{
    connect(transport, &DeviceTransport::sent, this,
            [this](const QString &device, const QByteArray &bytes) { record("tx", device, bytes); });
    connect(transport, &DeviceTransport::received, this,
            [this](const QString &device, const QByteArray &bytes) {
                record("rx", device, bytes);
                m_levels.hear(device, bytes); // also when nothing is recorded: it will need to know
            });
}

void SessionRecorder::setInterface(const QNetworkInterface &interface)
{
    m_levels.setInterface(interface);
}

QString SessionRecorder::start(const QString &path)
{
    stop();
    QString error = m_file.open(path, QIODevice::NewOnly);
    if (!error.isEmpty())
        return error;
    m_clock.start();
    m_met.clear();
    write(lineOf({{QStringLiteral("recording"), 1},
                  {QStringLiteral("created"), QDateTime::currentDateTimeUtc().toString(Qt::ISODate)},
                  {QStringLiteral("host"), QStringLiteral(KBX_VERSION)}}));
    m_levels.listen(isRecording());
    emit changed();
    return error;
}

void SessionRecorder::stop()
{
    if (!isRecording())
        return;
    m_levels.listen(false);
    m_file.close();
    emit changed();
}

void SessionRecorder::record(const char *direction, const QString &device, const QByteArray &message)
{
    if (!isRecording())
        return;
    meet(device);
    write(messageLine(m_clock.elapsed(), direction, device, message));
}

void SessionRecorder::meet(const QString &name)
{
    const KnownDevice *device = m_finder->device(name);
    if (!device || m_met.contains(name))
        return;
    m_met.insert(name);
    write(lineOf({{QStringLiteral("t_ms"), m_clock.elapsed()},
                  {QStringLiteral("dir"), QStringLiteral("device")},
                  {QStringLiteral("device"), name},
                  {QStringLiteral("type"), int(device->type())},
                  {QStringLiteral("product"), device->productName()},
                  {QStringLiteral("model"), device->model()},
                  {QStringLiteral("mac"), device->macAddress()},
                  {QStringLiteral("version"), pxDevice::versionToText(device->firmwareVersion()).mid(1)},
                  {QStringLiteral("feature_level"), int(device->featureLevel())}}));
}

void SessionRecorder::write(const QByteArray &line)
{
    if (!isRecording() || m_file.write(line))
        return;
    m_levels.listen(false);
    emit changed();
    emit problem(
        tr("The recording ended: %1 cannot grow (%2). Its first %3 lines are kept. Make room, and start "
           "another one.")
            .arg(QDir::toNativeSeparators(path()), m_file.error())
            .arg(lines()));
}

} // namespace devhost
