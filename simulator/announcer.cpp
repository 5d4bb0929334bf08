#include "simulator/announcer.h"

namespace sim {

namespace {

constexpr char announcementGroup[] = "239.255.77.1";
constexpr quint16 announcementPort = 47700;

} // namespace

Announcer::Announcer(int intervalMs, QObject *parent)
    : QObject(parent)
{
    m_timer.setInterval(intervalMs);
    connect(&m_timer, &QTimer::timeout, this, &Announcer::announce);
}

void Announcer::start(const QByteArray &announcement)
{
    m_announcement = announcement;
    announce();
    m_timer.start();
}

void Announcer::announce()
{
    m_sender.send(m_announcement, QHostAddress(QLatin1String(announcementGroup)), announcementPort);
}

} // namespace sim
