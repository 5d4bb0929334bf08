#include "simulator/presence.h"

#include <QDebug>

#include <algorithm>

namespace sim {

namespace {

constexpr char AnnouncementGroup[] = "239.255.77.1";
constexpr quint16 AnnouncementPort = 47700;

/// The loopback interface, whose name is another one on every system, when @p name is empty.
QNetworkInterface interfaceFor(const QString &name)
{
    const QList<QNetworkInterface> all = QNetworkInterface::allInterfaces();
    const auto found = std::find_if(all.cbegin(), all.cend(), [&name](const QNetworkInterface &candidate) {
        return name.isEmpty() ? bool(candidate.flags() & QNetworkInterface::IsLoopBack)
                              : candidate.name() == name;
    });
    return found == all.cend() ? QNetworkInterface() : *found;
}

} // namespace

Presence::Presence(const Options &options, const Intervals &intervals, const Voice &voice, QObject *parent)
    : QObject(parent)
    , m_options(options)
    , m_voice(voice)
    , m_control(options.seed, intervals.hold, voice.answer)
    , m_announcements(intervals.announce,
                      [this] {
                          return Packet{m_voice.announcement(port()),
                                        QHostAddress(QLatin1String(AnnouncementGroup)), AnnouncementPort};
                      })
    , m_levels(intervals.meter, voice.levels)
{
    m_returnTimer.setSingleShot(true);
    connect(&m_returnTimer, &QTimer::timeout, this, &Presence::appear);
    connect(&m_control, &ControlService::answered, this, &Presence::countRequest);
}

QString Presence::open()
{
    const Station station{m_options.address, interfaceFor(m_options.interface)};
    if (!station.interface.isValid())
        return m_options.interface.isEmpty()
            ? QStringLiteral("there is no loopback interface; name another one with --interface")
            : QStringLiteral("there is no network interface \"%1\"").arg(m_options.interface);
    if (!m_control.listen(station.address, m_options.port))
        return QStringLiteral("cannot listen on %1:%2: %3")
            .arg(station.address.toString())
            .arg(m_options.port)
            .arg(m_control.errorText());
    if (!m_announcements.open(station) || !m_levels.open(station))
        return QStringLiteral("cannot send from %1: %2")
            .arg(station.address.toString(), m_announcements.errorText());
    return {};
}

void Presence::applyOrder(const QString &path, const QJsonValue &order, const FaultSettings &faults)
{
    m_control.setFaults(faults);
    m_returnAfterMs = faults.returnAfterMs;
    const QString counted = QStringLiteral("vanish-after");
    if (path == QStringLiteral("/faults/") + counted
        || (path == QLatin1String("/faults") && order.toObject().contains(counted)))
        m_untilVanishing = faults.vanishAfter;
    if (path == QLatin1String("/present"))
        order.toBool() ? appear() : vanish();
}

void Presence::appear()
{
    m_returnTimer.stop();
    m_control.setSilent(false);
    m_announcements.sendNow();
    m_announcements.start();
    emit changed(true);
}

void Presence::vanish()
{
    m_returnTimer.stop(); // a restart under way does not end this
    m_control.setSilent(true);
    m_announcements.stop();
    m_levels.stop();
    emit changed(false);
}

void Presence::countRequest()
{
    if (m_untilVanishing == 0 || --m_untilVanishing > 0)
        return;
    qInfo() << "vanishing as ordered";
    vanish();
    if (m_returnAfterMs > 0)
        returnIn(m_returnAfterMs);
}

} // namespace sim
