#pragma once

#include "simulator/faults.h"

#include <QHostAddress>
#include <QTimer>
#include <QUdpSocket>

#include <functional>
#include <optional>

namespace sim {

struct Answer
{
    QByteArray bytes;
    int afterMs = 0; ///< time that the device takes for it
};

/// Takes control requests from a UDP port and sends each reply to whoever asked, by way of the faults that
/// the link is to have.
class ControlService : public QObject
{
    Q_OBJECT

public:
    /// No answers at all are possible.
    using Answerer = std::function<QVector<Answer>(const QByteArray &request)>;

    /// `holdMs` limits how long a reordered reply waits for another one to overtake it.
    ControlService(quint32 seed, int holdMs, const Answerer &answer, QObject *parent = nullptr);

    /// Port 0 takes any free one. False when the address or port cannot be had; errorText() says why.
    bool listen(const QHostAddress &address, quint16 port);
    quint16 port() const { return m_socket.localPort(); }
    QString errorText() const { return m_socket.errorString(); }

    /// Holds from the next request on.
    void setFaults(const FaultSettings &faults) { m_faults.setSettings(faults); }

    /// A silent service swallows requests unanswered, and replies that have not gone out yet.
    void setSilent(bool silent);
    bool isSilent() const { return m_silent; }

signals:
    /// A request was carried out.
    void answered();

private:
    struct Reply
    {
        QByteArray bytes;
        QHostAddress address;
        quint16 port = 0;
        Fate fate;
    };

    void readRequests();
    void serve(const QByteArray &request, const QHostAddress &address, quint16 port);
    void delay(const Reply &reply);
    void dispatch(const Reply &reply);
    void transmit(const Reply &reply);
    void releaseHeld();

    QUdpSocket m_socket;
    FaultDealer m_faults;
    Answerer m_answer;
    QTimer m_holdTimer;
    std::optional<Reply> m_held;
    int m_silences = 0; ///< replies from before the last one are lost
    bool m_silent = false;
};

} // namespace sim
