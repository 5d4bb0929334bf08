#pragma once

#include <QByteArray>
#include <QElapsedTimer>
#include <QHash>
#include <QHostAddress>
#include <QObject>
#include <QPair>
#include <QUdpSocket>

namespace devhost {

/// Carries messages between the host and devices over one UDP socket. A device is known by name; its
/// replies are told by the address and port they come from. Bytes pass unchanged in both directions.
class DeviceTransport : public QObject
{
    Q_OBJECT

public:
    explicit DeviceTransport(QObject *parent = nullptr);

    /// Opens the socket; the answer is empty, or a sentence on what failed.
    QString open();

    /// Where @p name is reached from now on, replacing an earlier place. Several names may share a place, as
    /// one device does that was renamed; what comes from there is for the one that was last sent something.
    void setRoute(const QString &name, const QHostAddress &address, quint16 port);
    /// Nothing can be sent to @p name any more.
    void removeRoute(const QString &name);

    /// Sends one message. What cannot be sent is told by problem(), never lost without a word, and the answer
    /// is false.
    bool send(const QString &name, const QByteArray &bytes);

    /// How long ago the message came of which received() tells at the moment, in ns: other work may have been
    /// in its way.
    qint64 sinceArrivalNs() const { return m_arrival.isValid() ? m_arrival.nsecsElapsed() : 0; }
    /// How long ago the message was handed to the system of which sent() tells at the moment, in ns: a device
    /// on this machine may have answered before the system returns.
    qint64 sinceSendingNs() const { return m_sending.isValid() ? m_sending.nsecsElapsed() : 0; }

signals:
    void sent(const QString &name, const QByteArray &bytes);
    void received(const QString &name, const QByteArray &bytes);
    /// A sentence for the user about what was for @p name.
    void problem(const QString &name, const QString &sentence);

private:
    using Place = QPair<QHostAddress, quint16>;

    void readPending();

    QUdpSocket m_socket;
    QHash<QString, Place> m_routes;
    QHash<Place, QString> m_askers;
    QElapsedTimer m_arrival;
    QElapsedTimer m_sending;
};

} // namespace devhost
