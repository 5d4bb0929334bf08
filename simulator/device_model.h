#pragma once

#include "simulator/device_table.h"
#include "simulator/levels.h"
#include "simulator/message.h"
#include "simulator/phone.h"
#include "simulator/presets.h"
#include "simulator/programme.h"
#include "simulator/tftp_uri.h"
#include "simulator/usb_host.h"
#include "simulator/voice_cues.h"

#include <QHash>

#include <functional>

namespace sim {

/// The device without its network: answers requests, keeps its settings, lives through time.
class DeviceModel : public QObject
{
    Q_OBJECT

public:
    DeviceModel(const Identity &identity, quint32 seed, QObject *parent = nullptr);

    const Identity &identity() const { return m_identity; }
    const ParameterTree &tree() const { return m_tree; }

    /// What FaultSettings::refuse says.
    void setRefusePattern(const QString &pattern) { m_refuse = pattern; }

    void setPhoneRange(PhoneRange range) { m_phone.setRange(range); }
    void setUsbPlug(UsbHost::Plug plug) { m_usbHost.setPlug(plug); }

    /// Levels in dB that channels show whatever they measure; null for none, by section and channel.
    void setPushedLevels(const QJsonObject &levels) { m_pushed = levels; }

    /// The reply to one request, exactly as it goes over the wire. Changes by it are done when it returns.
    QByteArray answer(const QByteArray &request);

    /// Moves phone, USB host, voice cue and programme on.
    void advance(int ms);

    /// As after switching the power on: settings stay, connections do not.
    void powerUp();

    Levels levels() const;

    /// Ends the load of a voice cue that fetchRequested() began: with the length of the new recording in
    /// ms, or with the old recording, if any, back in place.
    void finishLoad(int ms);
    void abandonLoad();

    /// Everything that outlives a restart.
    QJsonObject toJson() const;

    /// Takes over what toJson() gave; the reason when it does not fit, else "". Then nothing has changed.
    QString fromJson(const QJsonObject &state);

signals:
    void settingsChanged();
    void rebootRequested();
    void meteringRequested(bool on);
    void fetchRequested(const sim::TftpUri &source);

private:
    /// Carries a command out with its checked argument and gives the reason when it cannot be done now, else
    /// an empty text.
    using Command = std::function<QString(const QJsonValue &)>;

    QString textAnswer(const QString &command);
    Outcome jsonAnswer(const Request &request);
    Outcome set(const QString &path, const QJsonValue &value);
    Outcome run(const QString &path, const QJsonValue &argument);
    void addDeviceCommands();
    void addBluetoothCommands();
    void savePreset(int slot);
    QString loadPreset(int slot);
    QString beginFetch(const QJsonObject &order);
    void restoreDefaults();
    void settingsApplied();
    void publishStatus();
    void playEventCue(int cue);

    Identity m_identity;
    ParameterTree m_tree;
    QHash<QString, Command> m_commands;
    Presets m_presets;
    Phone m_phone;
    UsbHost m_usbHost;
    VoiceCues m_cues;
    Programme m_programme;
    QString m_refuse;
    QJsonObject m_pushed;
};

} // namespace sim
