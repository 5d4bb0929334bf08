#include "proof/bad_link.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QNetworkDatagram>
#include <QTimer>

namespace proof {

namespace {

/// The device's way to say no to @p request.
QByteArray refusal(const QByteArray &request)
{
    const QJsonObject asked = QJsonDocument::fromJson(request).object();
    const QString cmd = asked.contains(QLatin1String("get")) ? QStringLiteral("get") : QStringLiteral("set");
    return QJsonDocument(QJsonObject{{QStringLiteral("cmd"), cmd},
                                     {QStringLiteral("param"), asked.value(cmd)},
                                     {QStringLiteral("result"), QStringLiteral("refused by the link")}})
        .toJson(QJsonDocument::Compact);
}

} // namespace

BadLink::BadLink(const QHostAddress &device, quint16 port, quint32 seed)
    : m_device(device)
    , m_port(port)
    , m_dice(seed)
{
    m_socket.bind(QHostAddress(QHostAddress::LocalHost), 0);
    connect(&m_socket, &QUdpSocket::readyRead, this, &BadLink::read);
}

void BadLink::setFaults(const LinkFaults &faults)
{
    m_faults = faults;
    m_spoilt = m_spoilt || faults.garbage > 0;
    m_sinceFaults = 0;
}

void BadLink::forget()
{
    ++m_turn;
    m_delayed = 0;
}

void BadLink::vanish()
{
    m_cut = true;
    forget();
    QTimer::singleShot(m_faults.returnAfterMs, this, [this] {
        m_cut = false;
        emit cut(false);
    });
    emit cut(true);
}

void BadLink::send(const QByteArray &request)
{
    ++m_requests;
    if (m_cut)
        return;
    if (++m_sinceFaults == m_faults.vanishAt) {
        vanish();
        return;
    }
    if (happens(m_faults.drop / 2))
        return;
    if (happens(m_faults.refuse))
        deliverLater(refusal(request), m_faults.latencyMs);
    else
        m_socket.writeDatagram(request, m_device, m_port);
}

void BadLink::read()
{
    while (m_socket.hasPendingDatagrams()) {
        QByteArray reply = m_socket.receiveDatagram(65536).data();
        if (!m_spoilt)
            emit answered(reply);
        if (m_cut || happens(m_faults.drop / 2))
            continue;
        if (happens(m_faults.garbage))
            reply = spoilt(reply);
        const int jitter = m_faults.jitterMs > 0 ? m_dice.bounded(m_faults.jitterMs) : 0;
        const int late = happens(m_faults.overtake) ? m_faults.overtakenMs : 0;
        if (happens(m_faults.duplicate))
            deliverLater(reply, m_faults.latencyMs + m_dice.bounded(m_faults.latencyMs + 1));
        deliverLater(reply, m_faults.latencyMs + jitter + late);
    }
}

QByteArray BadLink::spoilt(QByteArray reply)
{
    switch (m_dice.bounded(3)) {
    case 0:
        reply.resize(m_dice.bounded(1, 200));
        for (char &byte : reply)
            byte = char(m_dice.bounded(256));
        break;
    case 1:
        reply.truncate(m_dice.bounded(reply.size() + 1));
        break;
    default:
        for (int i = m_dice.bounded(1, 4); i > 0 && !reply.isEmpty(); --i)
            reply[m_dice.bounded(reply.size())] = char(m_dice.bounded(32, 127));
    }
    return reply;
}

void BadLink::deliverLater(const QByteArray &reply, int ms)
{
    ++m_delayed;
    const auto deliver = [this, reply, turn = m_turn] {
        if (turn != m_turn)
            return;
        --m_delayed;
        ++m_replies;
        emit received(reply);
    };
    if (ms == 0)
        deliver();
    else
        QTimer::singleShot(ms, Qt::PreciseTimer, this, deliver);
}

} // namespace proof
