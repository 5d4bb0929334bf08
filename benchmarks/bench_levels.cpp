// Level datagrams: how many the editors can take, and what the usual number of them costs.

#include "benchmarks/report.h"
#include "editor/tarnkbx_main_window.h"
#include "plugin/velmar_sample_plugin_factory.h"
#include "tests/support/editor_session.h"

#include <QNetworkDatagram>
#include <QNetworkInterface>
#include <QTest>
#include <QTimer>
#include <QUdpSocket>

#include <ctime>
#include <functional>
#include <sys/resource.h>

namespace bench {

namespace {

constexpr int Runs = 25;
constexpr quint16 EditorPort = 5100;
constexpr quint16 BarePort = 5101;
// What a socket's receive buffer holds without loss.
constexpr int Burst = 150;
constexpr int BurstsPerRun = 20;
constexpr int LostAfterMs = 200;
constexpr int LoadSeconds = 6;

/// Opens all seven block editors of a live editor.
void openBlockEditors(const support::EditorSession &session)
{
    for (const char *open :
         {"onBtInGainClicked", "onNetRxGainClicked", "onUsbInGainClicked", "onMatrixMixerClicked",
          "onBtOutGainClicked", "onNetTxGainClicked", "onUsbOutGainClicked"})
        QMetaObject::invokeMethod(session.editor(), open);
}

/// A level datagram whose levels move with @p step as a programme would move them.
QByteArray levels(int step)
{
    QByteArray datagram(19, '\0');
    datagram[0] = char(0x81);
    for (int i = 3; i < datagram.size(); ++i)
        datagram[i] = char(-6 - (step * (i + 3) * 7) % 40);
    return datagram;
}

class Sender
{
public:
    Sender()
    {
        m_socket.bind(QHostAddress(QHostAddress::LocalHost), 0);
        m_socket.setMulticastInterface(QNetworkInterface::interfaceFromIndex(1));
    }

    void send(int step, quint16 port)
    {
        m_socket.writeDatagram(levels(step), QHostAddress(QStringLiteral("239.255.1.1")), port);
    }

private:
    QUdpSocket m_socket;
};

struct Throughput
{
    int lost = 0;
    std::clock_t spent = 0; ///< processor time of receiving, without the waits for what was lost
    int received = 0;

    double rate() const { return spent == 0 ? 0 : double(received) * CLOCKS_PER_SEC / double(spent); }
};

/// @p turn takes what is there and returns how many datagrams that was.
Throughput throughput(Sender &sender, quint16 port, const std::function<int()> &turn)
{
    Throughput sum;
    for (int burst = 0; burst < BurstsPerRun; ++burst) {
        turn(); // painting that is due by now belongs to the clock, not to the datagrams
        for (int i = 0; i < Burst; ++i)
            sender.send(burst * Burst + i, port);
        int received = 0;
        QElapsedTimer sinceLast;
        sinceLast.start();
        const std::clock_t start = std::clock();
        std::clock_t last = start;
        while (received < Burst && !sinceLast.hasExpired(LostAfterMs)) {
            if (const int taken = turn()) {
                received += taken;
                last = std::clock();
                sinceLast.start();
            }
        }
        sum.spent += last - start;
        sum.received += received;
        sum.lost += Burst - received;
    }
    return sum;
}

Throughput bareThroughput(Sender &sender)
{
    QUdpSocket socket;
    socket.bind(QHostAddress(QHostAddress::AnyIPv4), BarePort);
    socket.joinMulticastGroup(QHostAddress(QStringLiteral("239.255.1.1")),
                              QNetworkInterface::interfaceFromIndex(1));
    return throughput(sender, BarePort, [&socket] { return int(socket.receiveDatagram().isValid()); });
}

Throughput editorThroughput(Sender &sender, const support::EditorSession &session)
{
    int received = 0;
    auto *window = qobject_cast<TarnKBX_MainWindow *>(session.editor());
    const auto counting
        = QObject::connect(window, &TarnKBX_MainWindow::meteringLevels, [&received] { ++received; });
    const Throughput figure = throughput(sender, EditorPort, [&received] {
        received = 0;
        QCoreApplication::processEvents();
        return received;
    });
    QObject::disconnect(counting);
    return figure;
}

void measureThroughput(Report &report, Sender &sender, const support::EditorSession &session)
{
    QVector<double> shown;
    QVector<double> ratios;
    int lost = 0;
    for (int run = 0; run < Runs; ++run) {
        const Throughput bare = bareThroughput(sender);
        const Throughput editors = editorThroughput(sender, session);
        shown.append(editors.rate());
        ratios.append(editors.rate() / bare.rate());
        lost += bare.lost + editors.lost;
    }
    report.add(QStringLiteral("level datagrams a second of processor time into seven open editors"),
               median(shown), QString());
    report.addAtLeast(QStringLiteral("  to a bare receiveDatagram loop"), median(ratios), QStringLiteral("x"),
                      0.5);
    report.add(QStringLiteral("  lost on the way, of %1").arg(2 * Runs * BurstsPerRun * Burst), lost,
               QString());
}

double processorSeconds()
{
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    const auto seconds = [](const timeval &time) { return double(time.tv_sec) + double(time.tv_usec) / 1e6; };
    return seconds(usage.ru_utime) + seconds(usage.ru_stime);
}

double processorShare(Sender &sender, int perSecond)
{
    int step = 0;
    QTimer timer;
    timer.setTimerType(Qt::PreciseTimer);
    QObject::connect(&timer, &QTimer::timeout, [&] { sender.send(++step, EditorPort); });
    timer.start(1000 / perSecond);
    QTest::qWait(1000);
    const double before = processorSeconds();
    QElapsedTimer wall;
    wall.start();
    QTest::qWait(LoadSeconds * 1000);
    return 100.0 * (processorSeconds() - before) * 1e9 / double(wall.nsecsElapsed());
}

} // namespace

void measureLevels(Report &report)
{
    VelmarSamplePluginFactory factory;
    support::EditorSession session(&factory);
    session.goLive();
    openBlockEditors(session);
    QTest::qWait(1000);
    Sender sender;
    measureThroughput(report, sender, session);
    report.addAtMost(QStringLiteral("processor share, seven editors visible, 10 datagrams a second"),
                     processorShare(sender, 10), QStringLiteral("%"), 3);
    report.addAtMost(QStringLiteral("processor share, seven editors visible, 30 datagrams a second"),
                     processorShare(sender, 30), QStringLiteral("%"), 6);
}

} // namespace bench
