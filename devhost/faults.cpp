#include "devhost/faults.h"

#include <QCoreApplication>
#include <QJsonArray>
#include <QStringList>

#include <cmath>

namespace devhost {

namespace {

const QLatin1String AutoWord("auto");
const QLatin1String NoWord("none");

QString tr(const char *text)
{
    return QCoreApplication::translate("Faults", text);
}

QJsonObject faultsOf(const QJsonObject &nodes)
{
    return nodes.value(QLatin1String("faults")).toObject();
}

QString amountOf(const FaultNumber &fault, double value)
{
    switch (fault.unit) {
    case FaultNumber::Ms:
        return tr("%1 ms").arg(value);
    case FaultNumber::Percent:
        return tr("%1 %").arg(std::round(value * 1000) / 10);
    default:
        return QString::number(value);
    }
}

QStringList numbersOn(const QJsonObject &faults)
{
    QStringList on;
    for (const FaultNumber &fault : replyFaults() + transferFaults() + presenceFaults()) {
        const double value = faults.value(QLatin1String(fault.name)).toDouble();
        if (value > 0)
            on.append(QStringLiteral("%1 %2").arg(tr(fault.label).toLower(), amountOf(fault, value)));
    }
    return on;
}

QString labelOf(const QVector<FaultWord> &words, const QString &word)
{
    for (const FaultWord &each : words) {
        if (word == QLatin1String(each.word))
            return tr(each.label).toLower();
    }
    return word;
}

QStringList channelsIn(const QJsonObject &nodes, bool pushedOnly)
{
    QStringList channels;
    const QJsonObject levels = nodes.value(QLatin1String("levels")).toObject();
    for (auto section = levels.begin(); section != levels.end(); ++section) {
        const QJsonArray values = section.value().toArray();
        for (int channel = 0; channel < values.size(); ++channel) {
            if (!pushedOnly || values.at(channel).isDouble())
                channels.append(QStringLiteral("%1/%2").arg(section.key()).arg(channel));
        }
    }
    return channels;
}

/// In dB.
double pushedLevel(const QJsonObject &nodes, const QString &channel)
{
    const QStringList place = channel.split(QLatin1Char('/'));
    const QJsonObject levels = nodes.value(QLatin1String("levels")).toObject();
    return levels.value(place.first()).toArray().at(place.last().toInt()).toDouble();
}

} // namespace

QVector<FaultNumber> replyFaults()
{
    return {{"latency", "Late by", "Every reply is that late; after 2000 ms the editor asks what to do",
             FaultNumber::Ms},
            {"jitter", "Later by up to", "Up to so much is added to each reply's delay, at random",
             FaultNumber::Ms},
            {"drop", "Lost", "So many requests get no reply", FaultNumber::Percent},
            {"duplicate", "Doubled", "So many replies come twice", FaultNumber::Percent},
            {"reorder", "Overtaken", "So many replies come only after the next one", FaultNumber::Percent},
            {"garbage", "Garbage", "Random bytes come in place of so many replies", FaultNumber::Percent}};
}

QVector<FaultNumber> transferFaults()
{
    return {{"tftp-drop", "Packets lost", "So many packets of an upload are lost", FaultNumber::Percent},
            {"tftp-duplicate", "Packets doubled", "So many packets of an upload come twice",
             FaultNumber::Percent}};
}

QVector<FaultNumber> presenceFaults()
{
    return {
        {"vanish-after", "Vanish after", "Falls silent after so many requests", FaultNumber::Requests},
        {"return-after", "Return after", "Comes back so long after it has vanished, once", FaultNumber::Ms}};
}

QVector<FaultWord> transferWords()
{
    return {{"none", "No fault"},
            {"lost-ack", "Acknowledgements lost"},
            {"duplicate-ack", "Acknowledgements doubled"},
            {"wrong-block", "Wrong block numbers"},
            {"nack", "Refused by the device"},
            {"silence", "Silence from the third block on"}};
}

QVector<FaultWord> phoneWords()
{
    return {{"auto", "Walks about"}, {"near", "In range"}, {"away", "Out of range"}};
}

QVector<FaultWord> usbWords()
{
    return {{"auto", "Comes and goes"}, {"plugged", "Plugged in"}, {"unplugged", "Unplugged"}};
}

QString summaryOf(const QJsonObject &nodes)
{
    QStringList on;
    if (!nodes.value(QLatin1String("present")).toBool(true))
        on.append(tr("vanished"));
    const QJsonObject faults = faultsOf(nodes);
    on += numbersOn(faults);
    const QString refused = faults.value(QLatin1String("refuse")).toString();
    if (!refused.isEmpty())
        on.append(tr("refuses %1").arg(refused));
    const QString transfer = faults.value(QLatin1String("tftp-fault")).toString(NoWord);
    if (transfer != NoWord)
        on.append(tr("upload: %1").arg(labelOf(transferWords(), transfer)));
    const QString phone = nodes.value(QLatin1String("phone")).toString(AutoWord);
    if (phone != AutoWord)
        on.append(tr("phone %1").arg(labelOf(phoneWords(), phone)));
    const QString usb = nodes.value(QLatin1String("usb")).toString(AutoWord);
    if (usb != AutoWord)
        on.append(tr("USB %1").arg(labelOf(usbWords(), usb)));
    for (const QString &channel : channelsIn(nodes, true))
        on.append(tr("level of %1 at %2 dB").arg(channel).arg(pushedLevel(nodes, channel)));
    return on.join(QStringLiteral(", "));
}

QVector<Order> allWell(const QJsonObject &nodes)
{
    QVector<Order> orders;
    QJsonObject faults = faultsOf(nodes);
    for (auto it = faults.begin(); it != faults.end(); ++it) {
        if (it.key() == QLatin1String("tftp-fault"))
            it.value() = NoWord;
        else if (it.value().isString())
            it.value() = QString();
        else
            it.value() = 0;
    }
    if (faults != faultsOf(nodes))
        orders.append({QStringLiteral("/faults"), faults});
    for (const QString &channel : channelsIn(nodes, true))
        orders.append({QStringLiteral("/levels/") + channel, QJsonValue()});
    for (const char *node : {"phone", "usb"}) {
        if (nodes.value(QLatin1String(node)).toString(AutoWord) != AutoWord)
            orders.append({QLatin1Char('/') + QLatin1String(node), QString(AutoWord)});
    }
    if (!nodes.value(QLatin1String("present")).toBool(true))
        orders.append({QStringLiteral("/present"), true});
    return orders;
}

QStringList channelsOf(const QJsonObject &nodes)
{
    return channelsIn(nodes, false);
}

} // namespace devhost
