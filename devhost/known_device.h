#pragma once

#include "host/px_device.h"

#include <QElapsedTimer>
#include <QTimer>

namespace devhost {

struct Announcement;

/// A device that has announced itself at least once, with what the host needs beyond a plugin's view of it:
/// the model that chooses the plugin, the control port, and the clock that runs out when it falls silent.
class KnownDevice : public pxDevice
{
    Q_OBJECT

public:
    KnownDevice(const QString &name, int lostAfterMs, QObject *parent = nullptr);

    QString model() const { return m_model; }
    quint16 controlPort() const { return m_controlPort; }

    /// Takes over what the device said and marks it present.
    void hear(const Announcement &announcement, const QHostAddress &sender);
    /// Gives it as long again to announce itself.
    void excuseSilence() { m_silence.start(); }
    /// Since the last announcement.
    qint64 silentMs() const { return m_lastHeard.elapsed(); }

    /// Whoever keeps a pointer to the device over turns of the event loop holds it as long.
    void hold() { ++m_holders; }
    void letGo() { --m_holders; }
    bool isHeld() const { return m_holders > 0; }
    /// Nobody would miss it: it is lost and not held.
    bool isSpare() const { return !isPresent() && !isHeld(); }

signals:
    /// Its time ran out; it is lost unless a slot lets it be heard at once.
    void fellSilent();
    /// Its address or control port is another one than before, or it is back after having been lost.
    void routeChanged();

private:
    QString m_model;
    quint16 m_controlPort = 0;
    QTimer m_silence;
    QElapsedTimer m_lastHeard;
    int m_holders = 0;
};

} // namespace devhost
