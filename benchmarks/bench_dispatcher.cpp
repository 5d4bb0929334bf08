// What the dispatcher adds to the parsing of a reply, during the start-up query and in an editor at work.

#include "benchmarks/report.h"
#include "editor/tarnkbx_main_window.h"
#include "plugin/velmar_sample_plugin_factory.h"
#include "tests/support/editor_session.h"

#include <QJsonDocument>

namespace bench {

namespace {

constexpr int Runs = 21;
constexpr int RepliesPerRun = 500;

QByteArray replyOf(const support::ScriptedDevice &script, const QString &path)
{
    return QJsonDocument(QJsonObject{{QStringLiteral("cmd"), QStringLiteral("get")},
                                     {QStringLiteral("param"), path},
                                     {QStringLiteral("result"), QStringLiteral("OK")},
                                     {QStringLiteral("value"), script.value(path)}})
        .toJson(QJsonDocument::Compact);
}

struct Cost
{
    double microseconds; ///< of one reply
    double toParsing; ///< ratio to parsing the same bytes
};

/// In turns: the machine may be slower at one time than at another.
Cost costOf(TarnKBX_MainWindow *window, const QString &device, const QByteArray &reply)
{
    QVector<double> dispatched;
    QVector<double> ratios;
    for (int run = 0; run < Runs; ++run) {
        dispatched.append(medianMicroseconds(1, [&] {
            for (int i = 0; i < RepliesPerRun; ++i)
                window->handleAsciiReply(device, reply);
        }));
        const double parsed = medianMicroseconds(1, [&reply] {
            for (int i = 0; i < RepliesPerRun; ++i)
                Q_UNUSED(QJsonDocument::fromJson(reply).object())
        });
        ratios.append(dispatched.last() / parsed);
    }
    return {median(dispatched) / RepliesPerRun, median(ratios)};
}

void addRows(Report &report, const QString &what, const Cost &cost, double most)
{
    report.add(what, cost.microseconds, QStringLiteral("us"));
    report.addAtMost(QStringLiteral("  to parsing the same bytes"), cost.toParsing, QStringLiteral("x"),
                     most);
}

} // namespace

void measureDispatcher(Report &report)
{
    VelmarSamplePluginFactory factory;
    support::EditorSession session(&factory);
    session.goLive();
    auto *window = qobject_cast<TarnKBX_MainWindow *>(session.editor());
    const QString name = session.device.name();
    const QByteArray reply = replyOf(*session.script, QStringLiteral("/preset/dsp/dante_tx"));
    const QByteArray status = replyOf(*session.script, QStringLiteral("/status/usb"));
    session.script->setSilent(true);
    // The widgets show each reply; painting waits for the event loop, as it does between real replies.
    addRows(report, QStringLiteral("a settings reply of %1 bytes, live: all pages show it").arg(reply.size()),
            costOf(window, name, reply), 3);
    // So short a reply is parsed in no time: what it costs is what it shows.
    report.add(QStringLiteral("a status reply of %1 bytes, live").arg(status.size()),
               costOf(window, name, status).microseconds, QStringLiteral("us"));
    window->restartQuery();
    addRows(report, QStringLiteral("a reply of %1 bytes during the start-up query").arg(reply.size()),
            costOf(window, name, reply), 2);
}

} // namespace bench
