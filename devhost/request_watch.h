#pragma once

#include "devhost/wire_text.h"

#include <QElapsedTimer>
#include <QHash>
#include <QObject>
#include <QSet>
#include <QTimer>
#include <QVector>

namespace devhost {

/// How a device has answered what it was sent. Times are in ms, as the host saw them.
struct DeviceFigures
{
    int requests = 0;
    int waiting = 0; ///< not answered so far
    int answered = 0;
    int refused = 0; ///< among the answered ones
    int unreadable = 0; ///< among the answered ones: neither confirmed nor refused
    int late = 0; ///< among the answered ones: after RequestLimits::lateMs
    int lost = 0; ///< never answered
    double totalMs = 0; ///< of all answered ones together
    double worstMs = 0;

    double meanMs() const { return answered ? totalMs / answered : 0; }
    void add(const DeviceFigures &other);
};

struct RequestLimits
{
    int lateMs = 2000; ///< an editor asks its user what to do about a reply that takes longer
    int givenUpMs = 1500; ///< who sends a request again after so long expects no reply to the first any more
    int lostMs = 10000;
    int mostWaiting = 1000; ///< requests of one device; the longest waiting one is lost then
};

/// A request that a device answered with a no.
struct Refusal
{
    QString device;
    RequestText request;
    QString reason; ///< the device's own words, from the network
};

/// A request that waits for its reply.
struct WaitingRequest
{
    RequestText request; ///< its command is empty when none waits
    qint64 ms = 0; ///< for how long
};

/// Pairs the replies of devices with the requests they answer, and counts. A reply that names a command and a
/// path answers the longest waiting request of that command and path; any other one the request that waits
/// longest. A request that is sent again after its sender must have given it up counts as lost.
class RequestWatch : public QObject
{
    Q_OBJECT

public:
    struct Answer
    {
        qint64 token = -1; ///< of the request; -1 when nobody asked
        double ms = 0; ///< since it was sent
        bool isLate = false;
        ReplyText reply;
    };

    explicit RequestWatch(const RequestLimits &limits = {}, QObject *parent = nullptr);

    /// The message was sent @p sinceSendingNs ago; @p token comes back with the request's fate.
    void noteSent(const QString &device, const QByteArray &message, qint64 token, qint64 sinceSendingNs = 0);
    /// The message came @p sinceArrivalNs ago.
    Answer noteReceived(const QString &device, const QByteArray &message, qint64 sinceArrivalNs = 0);
    void forget(const QString &device);

    DeviceFigures figures(const QString &device) const;
    DeviceFigures figuresOfAll() const;
    WaitingRequest longestWaiting(const QString &device) const;

signals:
    /// At most ten times a second for a device, however many messages there are.
    void figuresChanged(const QString &device);
    void refused(const Refusal &refusal);
    void lost(qint64 token);

private:
    struct Open
    {
        QByteArray message;
        RequestText request;
        qint64 token;
        qint64 earlierNs; ///< that it was sent before @p since began
        QElapsedTimer since;
    };
    struct Device
    {
        DeviceFigures figures;
        QVector<Open> open; ///< the longest waiting first
    };

    void count(Device *device, const Answer &answer);
    void lose(const QString &name, int index);
    void loseOld();
    void noteChange(const QString &name);

    RequestLimits m_limits;
    QHash<QString, Device> m_devices;
    QSet<QString> m_changed;
    QTimer m_telling;
    QTimer m_losing; ///< runs while something waits
};

} // namespace devhost
