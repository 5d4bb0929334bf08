// Requests to the simulated device. What it answers must be a reply, what it holds must make sense, and it
// must be able to start again with the state that they leave behind.

#include "proof/fuzz/lines.h"
#include "simulator/device_model.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <cmath>
#include <memory>

namespace {

constexpr int InputsALook = 8;
constexpr int InputsADevice = 64; // one that has been through a lot tells more, up to a point

const sim::Identity &identity()
{
    static const sim::Identity it(QStringLiteral("KBX-0001"));
    return it;
}

QJsonObject ask(sim::DeviceModel *device, const QByteArray &request)
{
    return QJsonDocument::fromJson(device->answer(request)).object();
}

QJsonValue held(sim::DeviceModel *device, const char *path)
{
    return ask(device, QByteArray("{\"get\":\"") + path + "\"}").value(QLatin1String("value"));
}

QStringList protectedPhones(const QJsonArray &list)
{
    QStringList phones;
    for (const QJsonValue &phone : list) {
        if (phone[QLatin1String("keep")].toBool())
            phones.append(phone[QLatin1String("mac")].toString());
    }
    return phones;
}

/// Commands to the phone need one; clearing the list leaves the protected ones.
QByteArray answerAboutPhones(sim::DeviceModel *device, const QByteArray &request)
{
    const bool connected = held(device, "/status/bluetooth/state") == QLatin1String("connected");
    const QJsonArray before = held(device, "/status/bluetooth/list").toArray();
    QByteArray answer = device->answer(request);
    const QJsonObject reply = QJsonDocument::fromJson(answer).object();
    const QString path = reply.value(QLatin1String("param")).toString();
    if (reply.value(QLatin1String("result")) != QLatin1String("OK"))
        return answer;
    const QJsonArray after = held(device, "/status/bluetooth/list").toArray();
    if (path.endsWith(QLatin1String("/clear_list"))) {
        if (protectedPhones(before) != protectedPhones(after)
            || after.size() != protectedPhones(after).size())
            qFatal("the wrong phones are left");
    } else if (!connected && path.startsWith(QLatin1String("/control/bluetooth/"))
               && !path.endsWith(QLatin1String("/pair"))) {
        qFatal("done without a phone: %s", qPrintable(path));
    }
    return answer;
}

void checkDefaults(sim::DeviceModel *device, const QByteArray &answer)
{
    const QJsonObject reply = QJsonDocument::fromJson(answer).object();
    if (reply.value(QLatin1String("param")) != QLatin1String("/control/defaults")
        || reply.value(QLatin1String("result")) != QLatin1String("OK"))
        return;
    static const QJsonObject factory = sim::DeviceModel(identity(), 1).toJson();
    if (device->toJson() != factory)
        qFatal("the factory's settings are not restored");
}

void checkStrips(const QJsonArray &channels, const double *levels)
{
    for (int i = 0; i < channels.size(); ++i) {
        const QJsonValue limiter = channels.at(i)[QLatin1String("limiter")];
        if (channels.at(i)[QLatin1String("mute")].toBool() && levels[i] > sim::SilenceDb)
            qFatal("a muted channel sounds at %f dB", levels[i]);
        if (limiter[QLatin1String("enable")].toBool()
            && levels[i] > qMax(limiter[QLatin1String("threshold")].toDouble(), sim::SilenceDb))
            qFatal("a limited channel sounds at %f dB", levels[i]);
    }
}

void checkLevels(sim::DeviceModel *device)
{
    const sim::Levels levels = device->levels();
    const QJsonValue dsp = device->tree().value(QStringLiteral("/preset/dsp"));
    checkStrips(dsp[QLatin1String("dante_rx")].toArray(), levels.inputs.data());
    checkStrips(dsp[QLatin1String("usb_playback")].toArray(), levels.inputs.data() + 4);
    checkStrips(dsp[QLatin1String("bt_sink")].toArray(), levels.inputs.data() + 6);
    checkStrips(dsp[QLatin1String("dante_tx")].toArray(), levels.outputs.data());
    checkStrips(dsp[QLatin1String("usb_record")].toArray(), levels.outputs.data() + 4);
    checkStrips(dsp[QLatin1String("bt_source")].toArray(), levels.outputs.data() + 6);
    QByteArray expected("\x81\0\0", 3);
    for (int source = 0; source < 9; ++source)
        expected.append(char(std::lround(levels.inputs[size_t(source)])));
    for (const double level : levels.outputs)
        expected.append(char(std::lround(level)));
    if (sim::levelDatagram(levels) != expected)
        qFatal("another level datagram than described: %s", sim::levelDatagram(levels).toHex().constData());
}

void checkRestart(const sim::DeviceModel &device)
{
    sim::DeviceModel successor(identity(), 1);
    const QString problem = successor.fromJson(device.toJson());
    if (!problem.isEmpty())
        qFatal("a state that cannot be read again: %s", qPrintable(problem));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    static std::unique_ptr<sim::DeviceModel> device;
    static int inputs = 0;
    if (inputs++ % InputsADevice == 0)
        device = std::make_unique<sim::DeviceModel>(identity(), 1U);
    for (const QByteArray &request : linesOf(data, size)) {
        const bool aboutPhones = request.contains("/control/bluetooth/");
        const QByteArray reply
            = aboutPhones ? answerAboutPhones(device.get(), request) : device->answer(request);
        const bool isText = reply.startsWith("ACK") || reply.startsWith("NACK");
        if (!isText && !QJsonDocument::fromJson(reply).object().contains(QLatin1String("result")))
            qFatal("no reply: %s", reply.constData());
        if (request.contains("/control/defaults"))
            checkDefaults(device.get(), reply);
        device->advance(50);
    }
    if (inputs % InputsALook == 0)
        checkLevels(device.get());
    if (inputs % InputsADevice == 0)
        checkRestart(*device);
    return 0;
}
