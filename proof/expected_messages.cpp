#include "proof/expected_messages.h"

#include <QHash>
#include <QStringList>
#include <QWidget>

namespace proof::expected {

namespace {

QHash<QString, QString> simpleControls()
{
    QHash<QString, QString> paths{
        {QStringLiteral("usb_priority_checkBox"), QStringLiteral("/system/usb/priority")},
        {QStringLiteral("bt_interface_en_checkBox"), QStringLiteral("/system/bluetooth/enable")},
        {QStringLiteral("bt_disable_pairing_button_checkBox"), QStringLiteral("/system/bluetooth/button")},
        {QStringLiteral("bt_connection_mode_comboBox"), QStringLiteral("/system/bluetooth/connection_mode")},
        {QStringLiteral("bt_audio_bridging_comboBox"), QStringLiteral("/system/bluetooth/profile")},
        {QStringLiteral("en_multicast_async_notify_checkBox"),
         QStringLiteral("/system/notifications/enable")},
        {QStringLiteral("tone_gen_en_checkBox"), QStringLiteral("/system/function_gen/enable")},
        {QStringLiteral("bt_activate_pairing_pushButton"), QStringLiteral("/control/bluetooth/pair")},
        {QStringLiteral("bt_close_connection_pushButton"), QStringLiteral("/control/bluetooth/disconnect")},
        {QStringLiteral("bt_clear_pairing_pushButton"), QStringLiteral("/control/bluetooth/clear_list")},
        {QStringLiteral("avrcp_play_pushButton"), QStringLiteral("/control/bluetooth/play")},
        {QStringLiteral("avrcp_pause_pushButton"), QStringLiteral("/control/bluetooth/pause")},
        {QStringLiteral("avrcp_prev_pushButton"), QStringLiteral("/control/bluetooth/prev")},
        {QStringLiteral("avrcp_next_pushButton"), QStringLiteral("/control/bluetooth/next")},
        {QStringLiteral("avrcp_vol_dn_pushButton"), QStringLiteral("/control/bluetooth/vol_down")},
        {QStringLiteral("avrcp_vol_up_pushButton"), QStringLiteral("/control/bluetooth/vol_up")},
    };
    int cue = 0;
    for (const char *name : {"pair_init", "pair_end", "pair_success", "connect_failed"}) {
        const QString control = QStringLiteral("vc_%1_").arg(QLatin1String(name));
        paths.insert(control + QLatin1String("en_checkBox"),
                     QStringLiteral("/system/voice_cue/%1/enable").arg(cue));
        paths.insert(control + QLatin1String("play_pushButton"),
                     QStringLiteral("/control/voice_cue/%1/play").arg(cue));
        ++cue;
    }
    return paths;
}

/// The path of the channel that a strip's part belongs to, such as "/preset/dsp/dante_rx/2".
QString channelOf(const QWidget *part)
{
    static const QHash<QString, QString> Sections{
        {QStringLiteral("Dante Network Rx"), QStringLiteral("dante_rx")},
        {QStringLiteral("Dante Network Tx"), QStringLiteral("dante_tx")},
        {QStringLiteral("USB Playback"), QStringLiteral("usb_playback")},
        {QStringLiteral("USB Record"), QStringLiteral("usb_record")},
        {QStringLiteral("Bluetooth In"), QStringLiteral("bt_sink")},
        {QStringLiteral("Bluetooth Out"), QStringLiteral("bt_source")},
    };
    const QString section = Sections.value(part->window()->windowTitle());
    const int channel = part->window()->findChildren<const QWidget *>(part->objectName()).indexOf(part);
    return section.isEmpty() || channel < 0 ? QString()
                                            : QStringLiteral("/preset/dsp/%1/%2").arg(section).arg(channel);
}

QString below(const QString &channel, const char *member)
{
    return channel.isEmpty() ? QString() : channel + QLatin1String(member);
}

} // namespace

QString pathOf(const QWidget *control)
{
    static const QHash<QString, QString> Simple = simpleControls();
    if (control->objectName() == QLatin1String("digital_mute_pushButton"))
        return below(channelOf(control), "/mute");
    return Simple.value(control->objectName());
}

QString word(const QString &box, int index)
{
    static const QStringList Modes{QStringLiteral("basic"), QStringLiteral("reconnect"),
                                   QStringLiteral("exclusive")};
    static const QStringList Profiles{QStringLiteral("both"), QStringLiteral("media"), QStringLiteral("hfp")};
    return (box == QLatin1String("bt_connection_mode_comboBox") ? Modes : Profiles).value(index);
}

QString levelPath(const QWidget *level)
{
    return level->inherits("VmDspGain") ? below(channelOf(level), "/gain") : QString();
}

} // namespace proof::expected
