#pragma once

#include <QByteArray>
#include <QHostAddress>
#include <QObject>
#include <QRandomGenerator>
#include <QUdpSocket>

namespace proof {

/// What goes wrong between an editor and its device. Probabilities are 0 to 1.
struct LinkFaults
{
    int latencyMs = 0; ///< every reply is this late
    int jitterMs = 0; ///< and up to this much more
    double drop = 0; ///< a request or its reply
    double duplicate = 0;
    double overtake = 0; ///< a reply comes so late that the request has timed out
    double garbage = 0; ///< random bytes, or the reply with some bytes changed or its end cut off
    double refuse = 0; ///< the request never reaches the device, whose place an error reply takes
    int overtakenMs = 0; ///< how late such a reply is
    int vanishAt
        = 0; ///< the device is gone with this request, counted from when the faults were set; 0 never
    int returnAfterMs = 0;
};

/// The way between an editor and its device: one UDP socket, and faults dealt from a seed.
class BadLink : public QObject
{
    Q_OBJECT

public:
    BadLink(const QHostAddress &device, quint16 port, quint32 seed);

    void setFaults(const LinkFaults &faults);
    bool isCut() const { return m_cut; }
    /// Whether no reply is being held back.
    bool isQuiet() const { return m_delayed == 0; }
    void send(const QByteArray &request);
    /// What is under way is lost: the editor that asked is gone.
    void forget();

    int requests() const { return m_requests; }
    int replies() const { return m_replies; }

signals:
    /// The device has sent this; what of it is received, and when, is another matter. Silent once garbage was
    /// dealt: editors may hand on what they read of it.
    void answered(const QByteArray &reply);
    void received(const QByteArray &reply);
    /// The device vanished (true) or returned.
    void cut(bool gone);

private:
    bool happens(double probability) { return m_dice.generateDouble() < probability; }
    void vanish();
    void read();
    QByteArray spoilt(QByteArray reply);
    void deliverLater(const QByteArray &reply, int ms);

    QHostAddress m_device;
    quint16 m_port;
    QUdpSocket m_socket;
    QRandomGenerator m_dice;
    LinkFaults m_faults;
    int m_sinceFaults = 0;
    int m_requests = 0;
    int m_replies = 0;
    int m_delayed = 0;
    int m_turn = 0; ///< what is delayed from an earlier turn is lost
    bool m_cut = false;
    bool m_spoilt = false; ///< garbage was dealt
};

} // namespace proof
