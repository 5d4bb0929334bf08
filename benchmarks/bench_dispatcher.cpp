// What the dispatcher adds to the parsing of a reply.

#include "benchmarks/report.h"
#include "editor/tarnkbx_main_window.h"
#include "plugin/velmar_sample_plugin_factory.h"
#include "tests/support/editor_session.h"

#include <QJsonDocument>

namespace bench {

namespace {

constexpr int Runs = 21;
constexpr int RepliesPerRun = 2000;

QByteArray replyOf(const support::ScriptedDevice &script, const QString &path)
{
    return QJsonDocument(QJsonObject{{QStringLiteral("cmd"), QStringLiteral("get")},
                                     {QStringLiteral("param"), path},
                                     {QStringLiteral("result"), QStringLiteral("OK")},
                                     {QStringLiteral("value"), script.value(path)}})
        .toJson(QJsonDocument::Compact);
}

} // namespace

void measureDispatcher(Report &report)
{
    VelmarSamplePluginFactory factory;
    support::EditorSession session(&factory);
    session.goLive();
    // As during a query: the reply fills the cache and advances the query, no widget is touched.
    auto *window = qobject_cast<TarnKBX_MainWindow *>(session.editor());
    session.script->setSilent(true);
    window->restartQuery();
    const QString name = session.device.name();
    const QByteArray reply = replyOf(*session.script, QStringLiteral("/preset/dsp/dante_tx"));
    QVector<double> dispatched;
    QVector<double> ratios;
    // In turns: the machine may be slower at one time than at another.
    for (int run = 0; run < Runs; ++run) {
        dispatched.append(medianMicroseconds(1, [&] {
            for (int i = 0; i < RepliesPerRun; ++i)
                window->handleAsciiReply(name, reply);
        }));
        const double parsed = medianMicroseconds(1, [&reply] {
            for (int i = 0; i < RepliesPerRun; ++i)
                Q_UNUSED(QJsonDocument::fromJson(reply).object())
        });
        ratios.append(dispatched.last() / parsed);
    }
    report.add(QStringLiteral("one get reply of %1 bytes through the dispatcher").arg(reply.size()),
               median(dispatched) / RepliesPerRun, QStringLiteral("us"));
    report.addAtMost(QStringLiteral("  to parsing the same bytes"), median(ratios), QStringLiteral("x"), 2);
}

} // namespace bench
