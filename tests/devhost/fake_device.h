#pragma once

#include "devhost/announcement.h"
#include "tests/support/loopback.h"

#include <QNetworkDatagram>
#include <QUdpSocket>

/// A device on the loopback interface: announces itself and answers when the test says so.
class FakeDevice : public QObject
{
public:
    explicit FakeDevice(const QHostAddress &address = QHostAddress(QHostAddress::LocalHost))
    {
        m_control.bind(address, 0);
        m_announcer.bind(address, 0);
        m_announcer.setMulticastInterface(loopbackInterface());
        connect(&m_control, &QUdpSocket::readyRead, this, &FakeDevice::read);
    }

    QByteArray mac = "02:4B:42:58:00:01";

    quint16 port() const { return m_control.localPort(); }
    QHostAddress address() const { return m_control.localAddress(); }
    const QList<QByteArray> &heard() const { return m_heard; }

    void announce(const QByteArray &name, const QByteArray &model = "FAKE")
    {
        multicast(announcement(name, model), QStringLiteral("239.255.77.1"), 47700);
    }
    void multicast(const QByteArray &bytes, const QString &group, quint16 port)
    {
        m_announcer.writeDatagram(bytes, QHostAddress(group), port);
    }
    QByteArray announcement(const QByteArray &name, const QByteArray &model) const
    {
        return R"({"announce":"plexo","name":")" + name + R"(","type":1,"product":"TarnKBX","model":")"
            + model + R"(","mac":")" + mac + R"(","version":"1.2.0","feature_level":1,"control_port":)"
            + QByteArray::number(port()) + '}';
    }
    /// Sends @p bytes to whoever asked last.
    void answer(const QByteArray &bytes) { m_control.writeDatagram(bytes, m_asker, m_askerPort); }

private:
    void read()
    {
        while (m_control.hasPendingDatagrams()) {
            const QNetworkDatagram datagram = m_control.receiveDatagram();
            m_asker = datagram.senderAddress();
            m_askerPort = quint16(datagram.senderPort());
            m_heard.append(datagram.data());
        }
    }

    QUdpSocket m_control;
    QUdpSocket m_announcer;
    QHostAddress m_asker;
    quint16 m_askerPort = 0;
    QList<QByteArray> m_heard;
};
