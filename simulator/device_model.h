#pragma once

#include "simulator/command_table.h"
#include "simulator/identity.h"
#include "simulator/levels.h"
#include "simulator/message.h"
#include "simulator/parameter_tree.h"
#include "simulator/phone.h"
#include "simulator/presets.h"
#include "simulator/programme.h"
#include "simulator/tftp_uri.h"
#include "simulator/usb_host.h"
#include "simulator/voice_cues.h"

namespace sim {

/// The device without its network: answers requests, keeps its settings, lives through time.
class DeviceModel : public QObject
{
    Q_OBJECT

public:
    DeviceModel(const Identity &identity, quint32 seed, QObject *parent = nullptr);

    const Identity &identity() const { return m_identity; }
    const ParameterTree &tree() const { return m_tree; }

    /// Requests for paths that fit this pattern are refused (matchesPattern()), only sets when it begins with
    /// "set:"; none when empty.
    void setRefusePattern(const QString &pattern) { m_refuse = pattern; }

    /// The reply to one request, exactly as it goes over the wire. Changes by it are done when it returns.
    QByteArray answer(const QByteArray &request);

    /// Moves phone, USB host, voice cue and programme on by `ms` of clock time; the first two live `pace`
    /// times as fast.
    void advance(int ms, double pace = 1.0);

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
    QString textAnswer(const QString &command);
    bool isRefusedOnRequest(const Request &request) const;
    Outcome jsonAnswer(const Request &request);
    Outcome set(const QString &path, const QJsonValue &value);
    void addDeviceCommands();
    void addBluetoothCommands();
    void addVoiceCueCommands();
    void savePreset(int slot);
    QString loadPreset(int slot);
    QString beginFetch(const QJsonObject &order);
    void restoreDefaults();
    void settingsApplied();
    void publishStatus();
    void playEventCue(int cue);

    Identity m_identity;
    ParameterTree m_tree;
    CommandTable m_commands;
    Presets m_presets;
    Phone m_phone;
    UsbHost m_usbHost;
    VoiceCues m_cues;
    Programme m_programme;
    QString m_refuse;
};

} // namespace sim
