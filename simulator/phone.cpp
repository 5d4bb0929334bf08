#include "simulator/phone.h"

#include "simulator/device_table.h"

#include <QJsonArray>

#include <algorithm>

namespace sim {

namespace {

enum Cue { PairingStarted, PairingEnded, PairingSucceeded, ConnectFailed };

QVector<PairedPhone> factoryList()
{
    return {{QStringLiteral("5C:1D:D9:40:22:A1"), QStringLiteral("Anna's phone"), true},
            {QStringLiteral("A4:83:E7:0B:5E:17"), QStringLiteral("Büro 2"), false},
            {QStringLiteral("F0:99:B6:3C:71:0D"), QStringLiteral("Guest tablet"), false}};
}

/// The phones of people who come by and pair, in the order in which they do.
QVector<PairedPhone> visitors()
{
    return {{QStringLiteral("3C:28:6D:11:90:01"), QStringLiteral("Jonas"), false},
            {QStringLiteral("3C:28:6D:11:90:02"), QStringLiteral("Meeting room phone"), false},
            {QStringLiteral("3C:28:6D:11:90:03"), QStringLiteral("Priya 📱"), false},
            {QStringLiteral("3C:28:6D:11:90:04"), QStringLiteral("Stage left"), false},
            {QStringLiteral("3C:28:6D:11:90:05"), QStringLiteral("Ольга"), false},
            {QStringLiteral("3C:28:6D:11:90:06"), QStringLiteral("Tom \"DJ\" R."), false},
            {QStringLiteral("3C:28:6D:11:90:07"), QStringLiteral("Reception"), false},
            {QStringLiteral("3C:28:6D:11:90:08"), QStringLiteral("Backup phone"), false},
            {QStringLiteral("3C:28:6D:11:90:09"), QStringLiteral("Visitor"), false}};
}

bool contains(const QVector<PairedPhone> &list, const PairedPhone &phone)
{
    return std::any_of(list.begin(), list.end(), [&](const PairedPhone &p) { return p.mac == phone.mac; });
}

} // namespace

Phone::Phone(quint32 seed, QObject *parent)
    : QObject(parent)
    , m_paired(factoryList())
    , m_signal(seed)
{
}

void Phone::powerUp()
{
    enter(State::Idle);
}

void Phone::applySettings(const BluetoothSettings &settings)
{
    m_settings = settings;
    if (!m_settings.enabled)
        enter(State::Idle);
}

void Phone::setRange(PhoneRange range)
{
    m_range = range;
    if (range == PhoneRange::Away && m_state != State::Discoverable)
        enter(State::Idle);
}

void Phone::advance(int ms)
{
    m_inState += ms;
    switch (m_state) {
    case State::Idle:
        seekPaired();
        break;
    case State::Discoverable:
        if (m_inState >= FoundMs)
            meetNewPhone();
        break;
    case State::Pairing:
        if (m_inState >= PairMs)
            finishPairing();
        break;
    case State::Connecting:
        if (m_inState >= ConnectMs)
            enter(State::Connected);
        break;
    case State::Connected:
        m_player.advance(ms);
        m_signal.advance(ms);
        break;
    }
}

QString Phone::pair()
{
    if (!m_settings.enabled)
        return QStringLiteral("Bluetooth is disabled");
    enter(State::Discoverable);
    emit cueDue(PairingStarted);
    return {};
}

QString Phone::disconnectPhone()
{
    if (m_state == State::Idle)
        return QStringLiteral("no phone is connected");
    enter(State::Idle); // ends a pairing, too
    return {};
}

QString Phone::clearList()
{
    m_paired.erase(
        std::remove_if(m_paired.begin(), m_paired.end(), [](const PairedPhone &p) { return !p.keep; }),
        m_paired.end());
    if (isConnected() && !contains(m_paired, m_partner))
        enter(State::Idle);
    return {};
}

QString Phone::control(void (Player::*key)())
{
    if (!isConnected())
        return QStringLiteral("no phone is connected");
    (m_player.*key)();
    return {};
}

void Phone::enter(State state)
{
    m_state = state;
    m_inState = 0;
}

void Phone::seekPaired()
{
    const PairedPhone *called = candidate();
    if (!m_settings.enabled || m_range == PhoneRange::Away || m_inState < ReconnectMs || !called)
        return;
    m_partner = *called;
    enter(State::Connecting);
}

void Phone::meetNewPhone()
{
    const QVector<PairedPhone> around = m_range == PhoneRange::Away ? QVector<PairedPhone>() : visitors();
    const auto newcomer = std::find_if(around.begin(), around.end(),
                                       [this](const PairedPhone &p) { return !contains(m_paired, p); });
    emit cueDue(PairingEnded);
    if (newcomer == around.end()) {
        enter(State::Idle);
        return;
    }
    m_partner = *newcomer;
    enter(State::Pairing);
}

/// A full list gives up its oldest phone that is not protected; a list of protected ones takes no other.
void Phone::finishPairing()
{
    if (m_paired.size() == PairedPhonesMost) {
        const auto oldest
            = std::find_if(m_paired.rbegin(), m_paired.rend(), [](const PairedPhone &p) { return !p.keep; });
        if (oldest == m_paired.rend()) {
            enter(State::Idle);
            emit cueDue(ConnectFailed);
            return;
        }
        m_paired.erase(oldest.base() - 1);
    }
    m_paired.prepend(m_partner);
    enter(State::Connected);
    emit cueDue(PairingSucceeded);
}

/// The paired phone that the device would call on its own; null for none.
const PairedPhone *Phone::candidate() const
{
    if (m_settings.reconnect == BluetoothSettings::Reconnect::Never)
        return nullptr;
    const bool any = m_settings.reconnect == BluetoothSettings::Reconnect::Any;
    const auto found = std::find_if(m_paired.begin(), m_paired.end(),
                                    [any](const PairedPhone &p) { return any || p.keep; });
    return found == m_paired.end() ? nullptr : &*found;
}

QString Phone::stateWord() const
{
    switch (m_state) {
    case State::Discoverable:
        return QStringLiteral("discoverable");
    case State::Pairing:
        return QStringLiteral("pairing");
    case State::Connecting:
        return QStringLiteral("connecting");
    case State::Connected:
        return QStringLiteral("connected");
    case State::Idle:
        break;
    }
    return QStringLiteral("idle");
}

int Phone::rssi() const
{
    if (!isConnected())
        return -128;
    return m_range == PhoneRange::Near ? SignalWalk::NearDbm : m_signal.rssi();
}

QJsonObject Phone::device() const
{
    const bool named = m_state == State::Pairing || m_state == State::Connecting || isConnected();
    const auto shown = [this](const QString &text) { return isConnected() ? text : QString(); };
    return {{QStringLiteral("name"), named ? m_partner.name : QString()},
            {QStringLiteral("rssi"), rssi()},
            {QStringLiteral("song"), shown(m_player.song())},
            {QStringLiteral("artist"), shown(m_player.artist())},
            {QStringLiteral("album"), shown(m_player.album())},
            {QStringLiteral("playing"), isConnected() && m_player.isPlaying()},
            {QStringLiteral("volume"), m_player.volume()}};
}

QJsonObject Phone::status() const
{
    return {{QStringLiteral("state"), stateWord()},
            {QStringLiteral("list_size"), m_paired.size()},
            {QStringLiteral("list"), pairedList()},
            {QStringLiteral("device"), device()}};
}

QJsonArray Phone::pairedList() const
{
    QJsonArray list;
    for (const PairedPhone &phone : m_paired)
        list.append(QJsonObject{{QStringLiteral("mac"), phone.mac},
                                {QStringLiteral("name"), phone.name},
                                {QStringLiteral("keep"), phone.keep}});
    return list;
}

void Phone::setPairedList(const QJsonArray &list)
{
    m_paired.clear();
    for (int i = 0; i < qMin(list.size(), PairedPhonesMost); ++i) {
        const QJsonObject entry = list.at(i).toObject();
        m_paired.append({entry.value(QStringLiteral("mac")).toString(),
                         entry.value(QStringLiteral("name")).toString(),
                         entry.value(QStringLiteral("keep")).toBool()});
    }
}

void Phone::restoreFactoryList()
{
    m_paired = factoryList();
    enter(State::Idle);
}

} // namespace sim
