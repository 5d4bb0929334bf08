// Level datagrams, to a live editor whose block windows are open. Meters must show them, and nothing else.

#include "dsp/metering_socket.h"
#include "proof/fuzz/lines.h"
#include "proof/fuzz/live_editor.h"
#include "widgets/vm_meter.h"

#include <QNetworkDatagram>
#include <QTest>

#include <algorithm>
#include <optional>

namespace {

constexpr int LookMs = 100;
constexpr int InputsALook = 4096; // at clip marks, for which a meter has to look at its level

struct Meter
{
    VMMeter *meter;
    QWidget *strip;
    int byte; ///< of a datagram
};

QWidget *blockOf(const QString &title)
{
    for (QWidget *window : QApplication::topLevelWidgets()) {
        if (window->windowTitle().startsWith(title))
            return window;
    }
    qFatal("no block named %s", qPrintable(title));
}

QVector<Meter> allMeters()
{
    const QVector<QPair<QString, int>> blocks{
        {QStringLiteral("Dante Network Rx"), 3}, {QStringLiteral("USB Playback"), 7},
        {QStringLiteral("Bluetooth In"), 9},     {QStringLiteral("Dante Network Tx"), 12},
        {QStringLiteral("USB Record"), 16},      {QStringLiteral("Bluetooth Out"), 18}};
    QVector<Meter> meters;
    for (const auto &block : blocks) {
        int byte = block.second;
        for (QWidget *fader : blockOf(block.first)->findChildren<QWidget *>(QStringLiteral("vmdspgain")))
            meters.append({fader->findChild<VMMeter *>(), fader->parentWidget(), byte++});
    }
    return meters;
}

std::optional<double> levelAt(const QByteArray &datagram, int byte)
{
    if (byte >= datagram.size())
        return std::nullopt;
    return double(static_cast<signed char>(datagram.at(byte)));
}

void deliver(const support::EditorSession &session, const QVector<Meter> &meters, const QByteArray &bytes)
{
    QVector<double> before;
    for (const Meter &meter : meters)
        before.append(meter.meter->dbValuePort1());
    QMetaObject::invokeMethod(session.editor(), "meteringLevels", Q_ARG(QByteArray, bytes));
    for (int i = 0; i < meters.size(); ++i) {
        const std::optional<double> level
            = meters.at(i).strip->isEnabled() ? levelAt(bytes, meters.at(i).byte) : std::nullopt;
        if (meters.at(i).meter->dbValuePort1() != level.value_or(before.at(i)))
            qFatal("meter %d shows %f", i, meters.at(i).meter->dbValuePort1());
    }
}

/// The strips of the second USB channel are there in one mode only; a mark of clipping stays where it
/// belongs.
void lookClosely(support::EditorSession &session, const QVector<Meter> &meters, const QByteArray &bytes)
{
    static bool stereo = true;
    stereo = !stereo;
    session.deviceReports(QStringLiteral("/system/usb"),
                          stereo ? R"({"priority":false,"mode":"2x2"})"
                                 : R"({"priority":false,"mode":"speakerphone_ec"})");
    const auto hasLooked = [](const Meter &meter) { return meter.meter->maximum() > vm::lowestLevel; };
    QTest::qWait(LookMs); // until all have looked at what came before
    for (const Meter &meter : meters)
        meter.meter->clearMaximum();
    deliver(session, meters, bytes);
    if (!QTest::qWaitFor([&] { return std::any_of(meters.begin(), meters.end(), hasLooked); }, LookMs))
        return; // all of it is silence
    for (const Meter &meter : meters) {
        const double level = levelAt(bytes, meter.byte).value_or(vm::lowestLevel);
        if (hasLooked(meter) && meter.meter->isClipped() != (level >= 0))
            qFatal("a level of %f dB leaves the wrong mark", level);
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    support::EditorSession &session = proof::liveEditor();
    static const QVector<Meter> meters = allMeters();
    static int inputs = 0;
    const QHostAddress device(QStringLiteral("127.0.0.1"));
    for (const QByteArray &bytes : linesOf(data, size)) {
        QNetworkDatagram datagram(bytes);
        datagram.setSender(QHostAddress(QStringLiteral("127.0.0.2")), 1);
        if (isLevelDatagram(datagram, device))
            qFatal("the levels of another device are taken");
        datagram.setSender(device, 1);
        if (!isLevelDatagram(datagram, device))
            continue;
        deliver(session, meters, datagram.data());
        if (++inputs % InputsALook == 1)
            lookClosely(session, meters, datagram.data());
    }
    proof::letHappen();
    return 0;
}
