// Reloading the mixer, and painting what moves most.

#include "benchmarks/report.h"
#include "dsp/matrix_mixer_form.h"
#include "widgets/vm_dial.h"
#include "widgets/vm_meter.h"

#include <QJsonArray>
#include <QTest>

namespace bench {

namespace {

constexpr int Runs = 51;

QJsonObject mixerAt(int level)
{
    QJsonArray sinks;
    for (int sink = 0; sink < mixerSinks; ++sink) {
        QJsonArray sources;
        for (int source = 0; source < mixerSources; ++source)
            sources.append(level - sink - source);
        sinks.append(sources);
    }
    return {{QStringLiteral("value"), sinks}};
}

QStringList labels(int count)
{
    QStringList texts;
    for (int i = 0; i < count; ++i)
        texts.append(QString::number(i));
    return texts;
}

} // namespace

void measureMixer(Report &report)
{
    QJsonObject section = mixerAt(0);
    MatrixMixerForm form(labels(mixerSources), labels(mixerSinks), &section);
    int level = 0;
    const double reload = medianMicroseconds(Runs, [&] {
        section = mixerAt(-(++level % 20));
        form.onDataChanged();
    });
    report.addAtMost(QStringLiteral("one reload of the mixer, 4900 slot calls, without painting"),
                     reload / 1000.0, QStringLiteral("ms"), 1);
}

void measurePainting(Report &report)
{
    VMMeter meter;
    meter.resize(12, 200);
    meter.show();
    VmDial dial;
    dial.resize(58, 58);
    dial.show();
    QTest::qWait(200);
    int step = 0;
    report.add(QStringLiteral("one repaint of a meter"),
               medianMicroseconds(Runs,
                                  [&] {
                                      meter.setDbValuePort1(-40 + ++step % 30);
                                      meter.repaint();
                                  }),
               QStringLiteral("us"));
    report.add(QStringLiteral("one repaint of a dial"),
               medianMicroseconds(Runs,
                                  [&] {
                                      dial.setVal(-40 + ++step % 30);
                                      dial.repaint();
                                  }),
               QStringLiteral("us"));
}

} // namespace bench
