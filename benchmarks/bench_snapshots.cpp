// Writing a snapshot and applying it, without the device's time.

#include "benchmarks/report.h"
#include "plugin/velmar_sample_plugin_factory.h"
#include "tests/support/editor_session.h"

namespace bench {

void measureSnapshots(Report &report)
{
    constexpr int Runs = 21;
    VelmarSamplePluginFactory factory;
    support::EditorSession session(&factory);
    session.goLive();
    session.script->setSilent(true);
    QByteArray snapshot;
    report.addAtMost(QStringLiteral("writing a snapshot"),
                     medianMicroseconds(Runs, [&] { session.plugin->getSnapshot(&snapshot); }) / 1000.0,
                     QStringLiteral("ms"), 5);
    report.addAtMost(QStringLiteral("applying a snapshot, messages queued"),
                     medianMicroseconds(Runs, [&] { session.plugin->applySnapshot(snapshot); }) / 1000.0,
                     QStringLiteral("ms"), 5);
    session.plugin->clearVelmarAsciiPendingRequest();
}

} // namespace bench
