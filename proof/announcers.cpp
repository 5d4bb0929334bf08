#include "proof/announcers.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QNetworkInterface>
#include <QTimer>
#include <QUdpSocket>

namespace proof {

namespace {

constexpr int FloodStepMs = 10;
constexpr int FloodNamesAMs = 10;

class Announcer
{
public:
    explicit Announcer(const QNetworkInterface &interface)
    {
        m_socket.bind(QHostAddress(QHostAddress::AnyIPv4), 0);
        m_socket.setMulticastInterface(interface);
    }

    void announce(int number)
    {
        const QByteArray text
            = QStringLiteral(
                  R"({"announce":"plexo","name":"Many-%1","type":1,"product":"TarnKBX","model":"KBX",)"
                  R"("mac":"02:00:00:00:%2:%3","version":"1.2.0","feature_level":1,"control_port":9})")
                  .arg(number, 7, 10, QLatin1Char('0'))
                  .arg(number / 256 % 256, 2, 16, QLatin1Char('0'))
                  .arg(number % 256, 2, 16, QLatin1Char('0'))
                  .toUtf8();
        m_socket.writeDatagram(text, QHostAddress(QStringLiteral("239.255.77.1")), 47700);
    }

private:
    QUdpSocket m_socket;
};

int every(int ms, const std::function<void()> &action)
{
    QTimer timer;
    timer.setTimerType(Qt::PreciseTimer);
    QObject::connect(&timer, &QTimer::timeout, &timer, action);
    timer.start(ms);
    return QCoreApplication::exec();
}

} // namespace

int announce(int count, const QNetworkInterface &interface)
{
    Announcer announcer(interface);
    int next = 0;
    // Spread over the second, as devices are.
    return every(qMax(1, 1000 / count), [&] { announcer.announce(next++ % count); });
}

int flood(const QNetworkInterface &interface)
{
    Announcer announcer(interface);
    int next = 0;
    QElapsedTimer clock;
    clock.start();
    // What a busy machine has held up is made up for.
    return every(FloodStepMs, [&] {
        while (next < clock.elapsed() * FloodNamesAMs)
            announcer.announce(next++);
    });
}

} // namespace proof
