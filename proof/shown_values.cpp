#include "proof/shown_values.h"

#include "proof/station.h"

#include <QCheckBox>
#include <QJsonArray>
#include <QJsonObject>
#include <QTableWidget>
#include <QVariant>

namespace proof {

namespace {

/// One device's windows against one reading of the device.
class Comparison
{
public:
    Comparison(const Station &station, const QString &draft);

    QStringList run();

private:
    template <typename Value>
    void expect(const QString &name, const char *property, const Value &value)
    {
        const QWidget *widget = m_station.editor()->findChild<QWidget *>(name);
        compare(name, widget ? widget->property(property) : QVariant(), QVariant::fromValue(value));
    }
    void expectText(const char *name, const QJsonValue &text)
    {
        expect(QString::fromLatin1(name), "text", text.toString());
    }
    void expectChecked(const QString &name, bool checked) { expect(name, "checked", checked); }
    void compare(const QString &name, const QVariant &shown, const QVariant &held);

    void compareDevicePanel();
    void compareBluetooth();
    void comparePhone();
    void comparePairedPhones();
    void compareUsb();
    void compareVoiceCues();
    void compareAddresses();
    void compareStrips(const char *title, const char *section);
    void compareStrip(QWidget *block, const QString &title, int channel, const QJsonObject &held);
    void compareMixer();

    bool isSpeakerphone() const
    {
        return m_system[QStringLiteral("usb")][QLatin1String("mode")] != QLatin1String("2x2");
    }

    const Station &m_station;
    QString m_draft;
    QJsonValue m_system;
    QJsonValue m_status;
    QJsonValue m_dsp;
    QStringList m_differences;
};

/// Position of @p word in @p words, which has three; that of the last one for any other.
int indexOf(const QJsonValue &word, const char *first, const char *second)
{
    return word == QLatin1String(first) ? 0 : word == QLatin1String(second) ? 1 : 2;
}

Comparison::Comparison(const Station &station, const QString &draft)
    : m_station(station)
    , m_draft(draft)
    , m_system(station.process().ask(QStringLiteral("/system")))
    , m_status(station.process().ask(QStringLiteral("/status")))
    , m_dsp(station.process().ask(QStringLiteral("/preset")).toObject().value(QLatin1String("dsp")))
{
}

QStringList Comparison::run()
{
    if (!m_system.isObject() || !m_status.isObject() || !m_dsp.isObject())
        return {QStringLiteral("the device does not answer")};
    compareDevicePanel();
    compareBluetooth();
    comparePhone();
    comparePairedPhones();
    compareUsb();
    compareVoiceCues();
    compareAddresses();
    compareStrips("Dante Network Rx", "dante_rx");
    compareStrips("Dante Network Tx", "dante_tx");
    compareStrips("USB Playback", "usb_playback");
    compareStrips("USB Record", "usb_record");
    compareStrips("Bluetooth In", "bt_sink");
    compareStrips("Bluetooth Out", "bt_source");
    compareMixer();
    return m_differences;
}

void Comparison::compare(const QString &name, const QVariant &shown, const QVariant &held)
{
    if (!shown.isValid() || shown != held)
        m_differences.append(
            QStringLiteral("%1 shows %2, the device holds %3")
                .arg(name, shown.isValid() ? shown.toString() : QStringLiteral("nothing"), held.toString()));
}

void Comparison::compareDevicePanel()
{
    expectText("dev_name", m_station.device().name());
    expectText("dev_ip", m_station.device().ipAddress().toString());
    expectText("dev_mac", m_station.device().macAddress());
    expectText("dev_model", QStringLiteral("KBX"));
}

void Comparison::compareBluetooth()
{
    const QJsonValue held = m_system[QLatin1String("bluetooth")];
    expectChecked(QStringLiteral("bt_interface_en_checkBox"), held[QLatin1String("enable")].toBool());
    expectChecked(QStringLiteral("bt_disable_pairing_button_checkBox"),
                  held[QLatin1String("button")].toBool());
    expect(QStringLiteral("bt_connection_mode_comboBox"), "currentIndex",
           indexOf(held[QLatin1String("connection_mode")], "basic", "reconnect"));
    expect(QStringLiteral("bt_audio_bridging_comboBox"), "currentIndex",
           indexOf(held[QLatin1String("profile")], "both", "media"));
    expect(QStringLiteral("bt_tabWidget"), "enabled", held[QLatin1String("enable")].toBool());
    const QWidget *name
        = m_station.editor()->findChild<QWidget *>(QStringLiteral("bt_friendly_name_lineEdit"));
    if (m_draft.isNull() || name->property("text") != m_draft)
        expectText("bt_friendly_name_lineEdit", held[QLatin1String("name")]);
}

void Comparison::comparePhone()
{
    const QJsonValue status = m_status[QLatin1String("bluetooth")];
    const QJsonValue phone = status[QLatin1String("device")];
    const QJsonValue state = status[QLatin1String("state")];
    const bool connected = state != QLatin1String("idle") && state != QLatin1String("discoverable");
    const int signal = connected ? phone[QLatin1String("rssi")].toInt() : -128;
    expectText("bt_status_lineEdit", state);
    expectText("bt_connected_dev_lineEdit", connected ? phone[QLatin1String("name")] : QJsonValue());
    expectText("bt_album_label", phone[QLatin1String("album")]);
    expectText("bt_artist_label", phone[QLatin1String("artist")]);
    expectText("bt_track_label", phone[QLatin1String("song")]);
    expect(QStringLiteral("bt_sig_spinBox"), "value", signal);
    expect(QStringLiteral("bt_sig_good_vmled"), "state", signal >= -67);
    expect(QStringLiteral("bt_sig_avg_vmled"), "state", signal < -67 && signal >= -80);
    expect(QStringLiteral("bt_sig_bad_vmled"), "state", signal < -80 && signal > -128);
}

void Comparison::comparePairedPhones()
{
    const QWidget *dialog
        = m_station.editor()->findChild<QWidget *>(QStringLiteral("BtPriorityPairingDialog"));
    const auto *table = dialog ? dialog->findChild<QTableWidget *>() : nullptr;
    if (!table || dialog->isVisible())
        return; // an open dialog holds what the user has not applied yet
    const QJsonArray phones = m_status[QLatin1String("bluetooth")][QLatin1String("list")].toArray();
    compare(QStringLiteral("the list of paired phones"), table->rowCount(),
            m_status[QLatin1String("bluetooth")][QLatin1String("list_size")].toInt());
    for (int row = 0; row < qMin(table->rowCount(), phones.size()); ++row) {
        const QString name = QStringLiteral("paired phone %1").arg(row);
        const QTableWidgetItem *mac = table->item(row, 0);
        compare(name, mac->text(), phones.at(row)[QLatin1String("mac")].toString());
        compare(name, mac->checkState() == Qt::Checked, phones.at(row)[QLatin1String("keep")].toBool());
        compare(name, table->item(row, 1)->text(), phones.at(row)[QLatin1String("name")].toString());
    }
}

void Comparison::compareUsb()
{
    const QJsonValue held = m_system[QLatin1String("usb")];
    const QString mode = held[QLatin1String("mode")].toString();
    expect(QStringLiteral("usb_connection_vmled"), "state",
           m_status[QLatin1String("usb")][QLatin1String("state")] != QLatin1String("disconnected"));
    expectChecked(QStringLiteral("usb_priority_checkBox"), held[QLatin1String("priority")].toBool());
    expect(QStringLiteral("usb_audio_mode_comboBox"), "currentIndex", isSpeakerphone() ? 1 : 0);
    if (!isSpeakerphone())
        return; // the options keep what they were for the way back
    expectChecked(QStringLiteral("usb_mode_aec_checkBox"), !mode.endsWith(QLatin1String("no_ec")));
    expectChecked(QStringLiteral("usb_mode_telephony_checkBox"), mode.contains(QLatin1String("telephony")));
}

void Comparison::compareVoiceCues()
{
    const QJsonArray enabled = m_system[QLatin1String("voice_cue")].toArray();
    const QJsonArray valid = m_status[QLatin1String("voice_cue")].toArray();
    int cue = 0;
    for (const char *name : {"pair_init", "pair_end", "pair_success", "connect_failed"}) {
        const QString box = QStringLiteral("vc_%1_en_checkBox").arg(QLatin1String(name));
        const bool usable = valid.at(cue)[QLatin1String("valid")].toBool();
        expectChecked(box, usable && enabled.at(cue)[QLatin1String("enable")].toBool());
        expect(box, "enabled", usable);
        ++cue;
    }
}

void Comparison::compareAddresses()
{
    const QJsonValue network = m_system[QLatin1String("network")];
    expectChecked(QStringLiteral("dev_static_ip_checkBox"),
                  network[QLatin1String("ip_mode")] == QLatin1String("static"));
    expectText("dev_ip_lineEdit", network[QLatin1String("static_ip")]);
    expectText("dev_netmask_lineEdit", network[QLatin1String("static_netmask")]);
    expectText("dev_gateway_lineEdit", network[QLatin1String("static_gateway")]);
    const QJsonValue notes = m_system[QLatin1String("notifications")];
    expectChecked(QStringLiteral("en_multicast_async_notify_checkBox"),
                  notes[QLatin1String("enable")].toBool());
    expectText("multicast_async_notify_ip_lineEdit", notes[QLatin1String("ip")]);
    expectText("multicast_async_notify_port_lineEdit", QString::number(notes[QLatin1String("port")].toInt()));
    const QJsonValue levels = m_system[QLatin1String("metering")];
    expectText("multicast_metering_ip_lineEdit", levels[QLatin1String("ip")]);
    // A port that the user has emptied stays so while the group is the same.
    const QWidget *port
        = m_station.editor()->findChild<QWidget *>(QStringLiteral("multicast_metering_port_lineEdit"));
    if (!port->property("text").toString().isEmpty())
        expectText("multicast_metering_port_lineEdit",
                   QString::number(levels[QLatin1String("port")].toInt()));
}

void Comparison::compareStrips(const char *title, const char *section)
{
    QWidget *block = m_station.block(QLatin1String(title));
    const QJsonArray channels = m_dsp[QLatin1String(section)].toArray();
    for (int channel = 0; block && channel < channels.size(); ++channel)
        compareStrip(block, QLatin1String(title), channel, channels.at(channel).toObject());
}

void Comparison::compareStrip(QWidget *block, const QString &title, int channel, const QJsonObject &held)
{
    const bool away = title.startsWith(QLatin1String("USB")) && channel == 1 && isSpeakerphone();
    const auto part = [&](const char *name, const char *property) {
        const QWidget *widget = block->findChildren<QWidget *>(QLatin1String(name)).value(channel);
        return widget ? widget->property(property) : QVariant();
    };
    const QString name = QStringLiteral("%1, channel %2, ").arg(title).arg(channel + 1);
    compare(name + QLatin1String("available"), part("vmdspgain", "enabled"), !away);
    compare(name + QLatin1String("gain"), part("vmdspgain", "gain"),
            away ? 0.0 : held.value(QLatin1String("gain")).toDouble());
    compare(name + QLatin1String("mute"), part("digital_mute_pushButton", "checked"),
            !away && held.value(QLatin1String("mute")).toBool());
    if (held.contains(QLatin1String("invert")))
        compare(name + QLatin1String("invert"), part("digital_invert_pushButton", "checked"),
                !away && held.value(QLatin1String("invert")).toBool());
    const QJsonValue limiter = held.value(QLatin1String("limiter"));
    if (away || limiter.isUndefined())
        return;
    compare(name + QLatin1String("limiter"), part("limiter_en_checkBox", "checked"),
            limiter[QLatin1String("enable")].toBool());
    compare(name + QLatin1String("threshold"), part("limiter_thresh_spinBox", "value"),
            limiter[QLatin1String("threshold")].toInt());
}

void Comparison::compareMixer()
{
    QWidget *block = m_station.block(QStringLiteral("Matrix Mixer"));
    if (!block)
        return;
    const auto *table = block->findChild<QTableWidget *>(QStringLiteral("tableWidget"));
    const QJsonArray rows = m_dsp[QLatin1String("mixer")].toArray();
    for (int sink = 0; sink < rows.size(); ++sink) {
        for (int source = 0; source < rows.at(sink).toArray().size(); ++source) {
            const QWidget *dial
                = table->cellWidget(source + 1, sink + 1)->findChild<QWidget *>(QStringLiteral("vmdial"));
            compare(QStringLiteral("crosspoint of source %1 and sink %2").arg(source).arg(sink),
                    dial ? dial->property("val") : QVariant(), rows.at(sink).toArray().at(source).toDouble());
        }
    }
    const auto part = [block](const char *name, const char *property) {
        const QWidget *widget = block->findChild<QWidget *>(QLatin1String(name));
        return widget ? widget->property(property) : QVariant();
    };
    const QJsonValue tone = m_system[QLatin1String("function_gen")];
    compare(QStringLiteral("tone"), part("tone_gen_en_checkBox", "checked"),
            tone[QLatin1String("enable")].toBool());
    compare(QStringLiteral("tone frequency"), part("tone_gen_freq_spinBox", "value"),
            tone[QLatin1String("frequency")].toInt());
    compare(QStringLiteral("tone level"), part("tone_gen_level_spinBox", "value"),
            tone[QLatin1String("amplitude")].toInt());
}

} // namespace

QStringList differences(const Station &station, const QString &draft)
{
    return Comparison(station, draft).run();
}

} // namespace proof
