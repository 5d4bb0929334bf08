// Requests to the simulated device. What it answers must be a reply, and it must be able to start again with
// the state that they leave behind.

#include "proof/fuzz/lines.h"
#include "simulator/device_model.h"

#include <QJsonDocument>
#include <QJsonObject>

#include <memory>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    static const sim::Identity identity(QStringLiteral("KBX-0001"));
    static std::unique_ptr<sim::DeviceModel> device;
    static int inputs = 0;
    if (inputs++ % 64 == 0) // one that has been through a lot tells more, up to a point
        device = std::make_unique<sim::DeviceModel>(identity, 1U);
    for (const QByteArray &request : linesOf(data, size)) {
        const QByteArray reply = device->answer(request);
        const bool isText = reply.startsWith("ACK") || reply.startsWith("NACK");
        if (!isText && !QJsonDocument::fromJson(reply).object().contains(QLatin1String("result")))
            qFatal("no reply: %s", reply.constData());
        device->advance(50);
    }
    if (inputs % 64 == 0) {
        sim::DeviceModel successor(identity, 1);
        const QString problem = successor.fromJson(device->toJson());
        if (!problem.isEmpty())
            qFatal("a state that cannot be read again: %s", qPrintable(problem));
    }
    return 0;
}
