// Bluetooth, USB and voice cue settings.

#include "devhost/tour/areas.h"
#include "devhost/tour/dsp_places.h"
#include "devhost/tour/guide.h"
#include "devhost/tour/hands.h"

#include <QComboBox>
#include <QSharedPointer>

namespace devhost::tour {

namespace {

constexpr int RemoteTab = 1;
constexpr int SettingsTab = 0;
constexpr int UnavailableSource = 7; // "BT IN 2", taken away by every USB mode but 2x2

const QLatin1String UsbMode("/system/usb/mode");

QString bluetooth(const char *setting)
{
    return QStringLiteral("/system/bluetooth/%1").arg(QLatin1String(setting));
}

QString remote(const char *key)
{
    return QStringLiteral("/control/bluetooth/%1").arg(QLatin1String(key));
}

/// What a label or a line edit of the editor shows.
QString shown(const Guide &guide, const char *name)
{
    const QWidget *widget = guide.find(QLatin1String(name));
    return widget ? widget->property("text").toString() : QString();
}

Step switchBluetooth(Guide &guide, bool on)
{
    Step step = guide.set(on ? QStringLiteral("Bluetooth on") : QStringLiteral("Bluetooth off"),
                          QStringLiteral("bt_interface_en_checkBox"), on, bluetooth("enable"), on);
    step = alsoNeeds(step, [&guide, on] {
        const QWidget *tabs = guide.find(QStringLiteral("bt_tabWidget"));
        return unless(tabs && tabs->isEnabled() == on, QStringLiteral("the Bluetooth tabs do not follow"));
    });
    if (!on)
        step.picture = QStringLiteral("bluetooth-off");
    return step;
}

Step rename(Guide &guide)
{
    return guide.confirmed(
        QStringLiteral("rename it"),
        [&guide] {
            return guide.enterAndApply(QStringLiteral("bt_friendly_name_lineEdit"), NewName,
                                       QStringLiteral("bt_apply_friendly_name_pushButton"));
        },
        bluetooth("name"), NewName);
}

Step becomeDiscoverable(Guide &guide)
{
    Step step = guide.push(QStringLiteral("activate pairing"),
                           QStringLiteral("bt_activate_pairing_pushButton"), remote("pair"));
    step = alsoNeeds(step, [&guide] {
        const QString state = shown(guide, "bt_status_lineEdit");
        return unless(state == QLatin1String("discoverable") || state == QLatin1String("pairing"),
                      QStringLiteral("the status is \"%1\"").arg(state));
    });
    step.picture = QStringLiteral("pairing");
    return step;
}

Step becomeConnected(Guide &guide, const QString &name)
{
    Step step;
    step.name = name;
    step.missing = [&guide] {
        const QString state = shown(guide, "bt_status_lineEdit");
        const bool named = !shown(guide, "bt_connected_dev_lineEdit").isEmpty();
        return unless(state == QLatin1String("connected") && named,
                      QStringLiteral("the status is \"%1\"").arg(state));
    };
    step.area = guide.editorArea();
    return step;
}

/// Chooses each entry of a list once, the first one last.
Steps chooseEach(Guide &guide, const QString &list, const QString &path, const QStringList &words)
{
    Steps steps;
    for (int index = words.size() - 1; index >= 0; --index) {
        steps.append(guide.confirmed(
            QStringLiteral("choose \"%1\"").arg(words.at(index)),
            [&guide, list, index] { return hands::choose(guide.find<QComboBox>(list), index); }, path,
            words.at(index)));
    }
    return steps;
}

Step disconnectPhone(Guide &guide)
{
    const Step step = guide.push(QStringLiteral("close the connection, and the device stays idle"),
                                 QStringLiteral("bt_close_connection_pushButton"), remote("disconnect"));
    return alsoNeeds(step, [&guide] {
        const QString state = shown(guide, "bt_status_lineEdit");
        return unless(state == QLatin1String("idle") && shown(guide, "bt_connected_dev_lineEdit").isEmpty(),
                      QStringLiteral("the status is \"%1\"").arg(state));
    });
}

/// A media key that changes the track on display.
Step changeTrack(Guide &guide, const QString &name, const char *button, const char *key)
{
    const QSharedPointer<QString> before(new QString);
    Step step = guide.confirmed(
        name,
        [&guide, before, button] {
            *before = shown(guide, "bt_track_label");
            return hands::click(guide.find(QLatin1String(button)));
        },
        remote(key));
    step = alsoNeeds(step, [&guide, before] {
        return unless(shown(guide, "bt_track_label") != *before, QStringLiteral("the track is the same"));
    });
    step.picture = QStringLiteral("track-%1").arg(QLatin1String(key));
    return step;
}

Steps remoteSteps(Guide &guide)
{
    const QString tabs = QStringLiteral("bt_tabWidget");
    return {
        guide.tab(QStringLiteral("go to the phone's remote control"), tabs, RemoteTab),
        guide.push(QStringLiteral("pause"), QStringLiteral("avrcp_pause_pushButton"), remote("pause")),
        guide.push(QStringLiteral("play"), QStringLiteral("avrcp_play_pushButton"), remote("play")),
        changeTrack(guide, QStringLiteral("next track"), "avrcp_next_pushButton", "next"),
        changeTrack(guide, QStringLiteral("previous track"), "avrcp_prev_pushButton", "prev"),
        guide.push(QStringLiteral("louder"), QStringLiteral("avrcp_vol_up_pushButton"), remote("vol_up")),
        guide.push(QStringLiteral("softer"), QStringLiteral("avrcp_vol_dn_pushButton"), remote("vol_down")),
        guide.tab(QStringLiteral("go back to the Bluetooth settings"), tabs, SettingsTab),
    };
}

bool mixerCellEnabled(const Guide &guide)
{
    const QWidget *dial = dialOf(guide, UnavailableSource, 0);
    return dial && dial->isEnabled();
}

Step withOverlay(Guide &guide, const Step &step, bool available)
{
    return alsoNeeds(step, [&guide, available] {
        return unless(mixerCellEnabled(guide) == available, QStringLiteral("the mixer does not follow"));
    });
}

Step chooseMode(Guide &guide, const QString &name, int index, const QString &word)
{
    const Step step = guide.confirmed(
        name,
        [&guide, index] {
            return hands::choose(guide.find<QComboBox>(QStringLiteral("usb_audio_mode_comboBox")), index);
        },
        UsbMode, word);
    return withOverlay(guide, step, index == 0);
}

Step chooseOption(Guide &guide, const QString &name, const QString &box, bool checked, const QString &word)
{
    return withOverlay(guide, guide.set(name, box, checked, UsbMode, word), false);
}

/// Opens the mixer before and closes it afterwards, as it would cover the editor in later pictures.
Steps besideTheMixer(Guide &guide, const Steps &steps)
{
    return Steps{guide.page(QStringLiteral("go to the diagram"), DspPage), openAgain(guide, mixer()),
                 guide.page(QStringLiteral("go back to the audio settings"), AudioPage)}
    + steps + Steps{guide.escape(mixer().title)};
}

Steps usbSteps(Guide &guide)
{
    const QString echo = QStringLiteral("usb_mode_aec_checkBox");
    const QString telephony = QStringLiteral("usb_mode_telephony_checkBox");
    Step speakerphone
        = chooseMode(guide, QStringLiteral("USB as a speakerphone, and the mixer's cells close"), 1,
                     QStringLiteral("speakerphone_no_ec"));
    speakerphone.picture = QStringLiteral("mixer-unavailable");
    speakerphone.area = guide.titledArea(mixer().title);
    Step both = guide.set(QStringLiteral("and telephony"), telephony, true, UsbMode,
                          QStringLiteral("speakerphone_telephony_ec"));
    both.picture = QStringLiteral("usb-mode");
    const Steps closed{speakerphone,
                       chooseOption(guide, QStringLiteral("with echo cancellation"), echo, true,
                                    QStringLiteral("speakerphone_ec"))};
    const Steps open{chooseOption(guide, QStringLiteral("telephony alone"), echo, false,
                                  QStringLiteral("speakerphone_telephony_no_ec")),
                     chooseMode(guide, QStringLiteral("USB as a sound card again, and the cells open"), 0,
                                QStringLiteral("2x2"))};
    const Step priority = guide.confirmed(
        QStringLiteral("USB priority"),
        [&guide] {
            return hands::click(guide.find(QStringLiteral("usb_priority_checkBox")), {8, 10});
        },
        QStringLiteral("/system/usb/priority"));
    return besideTheMixer(guide, closed) + Steps{both} + besideTheMixer(guide, open) + Steps{priority};
}

Steps cueSteps(Guide &guide)
{
    const char *const rows[] = {"pair_init", "pair_end", "pair_success", "connect_failed"};
    Steps steps{guide.page(QStringLiteral("go to the voice cues"), CuePage, QStringLiteral("voice-cues"))};
    for (int cue = 0; cue < 4; ++cue) {
        const QString row = QLatin1String(rows[cue]);
        const QString box = QStringLiteral("vc_%1_en_checkBox").arg(row);
        const QString enable = QStringLiteral("/system/voice_cue/%1/enable").arg(cue);
        steps.append(guide.set(QStringLiteral("voice cue %1 off").arg(cue), box, false, enable, false));
        steps.append(guide.set(QStringLiteral("voice cue %1 on").arg(cue), box, true, enable, true));
        steps.append(guide.push(QStringLiteral("play voice cue %1").arg(cue),
                                QStringLiteral("vc_%1_play_pushButton").arg(row),
                                QStringLiteral("/control/voice_cue/%1/play").arg(cue)));
    }
    return steps;
}

} // namespace

Steps settingsSteps(Guide &guide)
{
    Step connected = becomeConnected(guide, QStringLiteral("a phone pairs and connects"));
    connected.picture = QStringLiteral("connected");
    Steps steps{
        guide.page(QStringLiteral("go to the audio settings"), AudioPage, QStringLiteral("audio-config")),
        switchBluetooth(guide, false),
        switchBluetooth(guide, true),
        rename(guide),
        becomeDiscoverable(guide),
        connected,
    };
    steps.append(remoteSteps(guide));
    steps.append(prioritySteps(guide));
    steps.append(usbSteps(guide));
    steps.append(cueSteps(guide));
    return steps;
}

Steps connectionSteps(Guide &guide)
{
    Steps steps{guide.page(QStringLiteral("go to the audio settings once more"), AudioPage),
                becomeConnected(guide, QStringLiteral("the device calls its latest phone"))};
    steps.append(chooseEach(guide, QStringLiteral("bt_audio_bridging_comboBox"), bluetooth("profile"),
                            {QStringLiteral("both"), QStringLiteral("media"), QStringLiteral("hfp")}));
    // Ends with the one in which the device calls nobody.
    steps.append(
        chooseEach(guide, QStringLiteral("bt_connection_mode_comboBox"), bluetooth("connection_mode"),
                   {QStringLiteral("basic"), QStringLiteral("reconnect"), QStringLiteral("exclusive")}));
    steps.append(disconnectPhone(guide));
    steps.append(clearPairingSteps(guide));
    return steps;
}

} // namespace devhost::tour
