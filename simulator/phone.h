#pragma once

#include "simulator/player.h"
#include "simulator/programme.h"

#include <QJsonObject>
#include <QObject>
#include <QVector>

namespace sim {

/// How the device's Bluetooth interface is set up ("/system/bluetooth").
struct BluetoothSettings
{
    enum class Reconnect {
        Never, ///< "basic": only by pairing
        Any, ///< "reconnect": the most recently paired phone
        Protected ///< "exclusive": the most recently paired phone that is protected
    };

    bool enabled = false;
    Reconnect reconnect = Reconnect::Any;
    bool media = true; ///< music is bridged, not calls alone
};

/// Where the phones are that could be connected.
enum class PhoneRange {
    Walking, ///< near and far by turns
    Near,
    Away ///< out of reach
};

struct PairedPhone
{
    QString mac;
    QString name;
    bool keep = false; ///< protected from "clear_list"
};

/// The Bluetooth side of the device together with the phones around it. Time comes in through advance(),
/// so its life can be run at any pace. Commands give the reason when they cannot be carried out, else "".
class Phone : public QObject
{
    Q_OBJECT

public:
    /// Durations in ms of simulated time.
    static constexpr int ReconnectMs = 3000; ///< idle until a paired phone is called
    static constexpr int ConnectMs = 1000;
    static constexpr int FoundMs = 4000; ///< discoverable until a new phone finds the device
    static constexpr int PairMs = 2000;

    explicit Phone(quint32 seed, QObject *parent = nullptr);

    /// As after switching the power on: not connected, everything that is paired stays paired.
    void powerUp();
    void applySettings(const BluetoothSettings &settings);
    void setRange(PhoneRange range);
    void advance(int ms);

    QString pair();
    QString disconnectPhone();
    QString clearList();
    QString control(void (Player::*key)());

    /// The content of "/status/bluetooth".
    QJsonObject status() const;
    bool isConnected() const { return m_state == State::Connected; }

    /// The phone plays music to the device at the moment.
    bool isSounding() const { return isConnected() && m_player.isPlaying() && m_settings.media; }
    double volumeDb() const { return m_player.volumeDb(); }

    /// The list of paired phones, most recent first, at most eight.
    QJsonArray pairedList() const;
    void setPairedList(const QJsonArray &list);
    void restoreFactoryList();

signals:
    /// A pairing event for which the device has a voice cue (0 to 3).
    void cueDue(int cue);

private:
    enum class State { Idle, Discoverable, Pairing, Connecting, Connected };

    void enter(State state);
    void seekPaired();
    void meetNewPhone();
    void finishPairing();
    const PairedPhone *candidate() const;
    QString stateWord() const;
    QJsonObject device() const;
    int rssi() const; // dBm

    BluetoothSettings m_settings;
    PhoneRange m_range = PhoneRange::Walking;
    State m_state = State::Idle;
    int m_inState = 0; // ms
    QVector<PairedPhone> m_paired;
    PairedPhone m_partner; // connected, or about to be
    Player m_player;
    SignalWalk m_signal;
};

} // namespace sim
