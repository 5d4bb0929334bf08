// From the double click on a device to its live editor, and what one more editor costs. What a user waits for
// is the window; the query runs behind it, and ends with a look at the mixer 500 ms after its nineteenth
// reply.

#include "benchmarks/report.h"
#include "host/plexo_plugin.h"
#include "host/plexo_plugin_factory.h"
#include "tests/support/editor_session.h"

#include <QEventLoop>
#include <QFile>
#include <QMainWindow>
#include <QPluginLoader>
#include <QTimer>

#include <ctime>
#include <functional>
#include <memory>
#include <unistd.h>
#include <utility>

namespace bench {

namespace {

constexpr int Runs = 9;
constexpr int QueryRequests = 35;
constexpr double PaintedWithinMs = 150; // after the double click: longer is seen as a wait

double residentKiB()
{
    QFile file(QStringLiteral("/proc/self/statm"));
    if (!file.open(QIODevice::ReadOnly))
        return 0;
    return file.readAll().split(' ').value(1).toDouble() * double(sysconf(_SC_PAGESIZE)) / 1024.0;
}

double processorMs()
{
    return double(clock()) * 1e3 / CLOCKS_PER_SEC;
}

PlexoPluginFactory *load(Report &report)
{
    static QPluginLoader loader(QStringLiteral(PLUGIN_FILE));
    QElapsedTimer timer;
    timer.start();
    auto *factory = qobject_cast<PlexoPluginFactory *>(loader.instance());
    if (!factory)
        qFatal("%s", qPrintable(loader.errorString()));
    report.add(QStringLiteral("loading the plugin library, once"), double(timer.nsecsElapsed()) / 1e6,
               QStringLiteral("ms"));
    return factory;
}

/// Tells of the first time that a widget has painted itself.
class FirstPaint : public QObject
{
public:
    FirstPaint(QWidget *widget, std::function<void()> told)
        : m_told(std::move(told))
    {
        widget->installEventFilter(this);
    }

    bool eventFilter(QObject *, QEvent *event) override
    {
        if (event->type() == QEvent::Paint && m_told)
            QTimer::singleShot(0, this, std::exchange(m_told, nullptr));
        return false;
    }

private:
    std::function<void()> m_told;
};

/// Milliseconds until a widget that @p open makes and shows has painted itself.
double untilPainted(const std::function<QWidget *()> &open)
{
    QElapsedTimer timer;
    timer.start();
    QEventLoop loop;
    const FirstPaint painting(open(), [&loop] { loop.quit(); });
    loop.exec();
    return double(timer.nsecsElapsed()) / 1e6;
}

double emptyWindowPainted()
{
    QMainWindow window;
    return untilPainted([&window] {
        window.resize(869, 635);
        window.show();
        return &window;
    });
}

double editorPainted(PlexoPluginFactory *factory)
{
    std::unique_ptr<support::EditorSession> session;
    return untilPainted([&] {
        session = std::make_unique<support::EditorSession>(factory);
        session->attach();
        return session->editor();
    });
}

void measureWindow(Report &report, PlexoPluginFactory *factory)
{
    emptyWindowPainted(); // whoever opens an editor has shown a window before
    report.addAtMost(QStringLiteral("opening: the first editor of a process is painted after"),
                     editorPainted(factory), QStringLiteral("ms"), PaintedWithinMs);
    QVector<double> editor;
    QVector<double> empty;
    for (int run = 0; run < Runs; ++run) {
        empty.append(emptyWindowPainted());
        editor.append(editorPainted(factory));
    }
    report.addAtMost(QStringLiteral("opening: another one"), median(editor), QStringLiteral("ms"),
                     PaintedWithinMs);
    report.add(QStringLiteral("  an empty window"), median(empty), QStringLiteral("ms"));
}

/// Sends one get after the other, each when the one before is answered, and does nothing else.
class PingPong : public PlexoPlugin
{
public:
    explicit PingPong(const QStringList &paths)
        : m_left(paths)
    {
    }

    QWidget *getPluginWidget() override { return nullptr; }
    bool checkSnapshot(const QByteArray &) override { return false; }
    void getSnapshot(QByteArray *) override { }
    void applySnapshot(QByteArray) override { }

    void recvVelmarAsciiMsg(QString, QByteArray) override
    {
        if (m_left.isEmpty())
            loop.quit();
        else
            emit sendVelmarAsciiMsg(QString(), pxDevice::DEV_TYPE_NETWORK,
                                    "{\"get\":\"" + m_left.takeFirst().toUtf8() + "\"}");
    }

    QEventLoop loop;

private:
    QStringList m_left;
};

/// Milliseconds of processor time.
double pingPong(const QStringList &paths)
{
    PingPong plugin(paths);
    const support::ScriptedDevice device(&plugin);
    const double before = processorMs();
    plugin.recvVelmarAsciiMsg(QString(), QByteArray());
    plugin.loop.exec();
    return processorMs() - before;
}

/// Times of one query, in milliseconds from its first request.
struct Query
{
    double answered = 0; ///< the last of its requests
    double processor = 0; ///< time of the processor until then
    double live = 0; ///< the level request, the first thing that a live editor sends
};

/// Of an editor that is on the screen before it is given its device.
Query watchQuery(PlexoPluginFactory *factory)
{
    support::EditorSession session(factory);
    untilPainted([&session] {
        session.editor()->show();
        return session.editor();
    });
    Query query;
    QElapsedTimer timer;
    double processorBefore = 0;
    QEventLoop loop;
    const auto now = [&timer] { return double(timer.nsecsElapsed()) / 1e6; };
    QObject::connect(session.plugin.data(), &PlexoPlugin::updateGuiData, &loop, [&] {
        if (session.script->gets().size() != QueryRequests || query.answered > 0)
            return;
        query.answered = now();
        query.processor = processorMs() - processorBefore;
    });
    QObject::connect(session.plugin.data(), &PlexoPlugin::sendVelmarAsciiMsg, &loop, [&] {
        if (!timer.isValid()) {
            timer.start();
            processorBefore = processorMs();
        }
        if (session.script->commands().isEmpty())
            return;
        query.live = now();
        loop.quit();
    });
    session.attach();
    loop.exec();
    return query;
}

void measureQuery(Report &report, PlexoPluginFactory *factory)
{
    support::EditorSession session(factory);
    session.goLive();
    QVector<double> answered;
    QVector<double> processor;
    QVector<double> look;
    QVector<double> bare;
    for (int run = 0; run < Runs; ++run) {
        const Query query = watchQuery(factory);
        answered.append(query.answered);
        processor.append(query.processor);
        look.append(query.live - query.answered);
        bare.append(pingPong(session.script->gets()));
    }
    report.add(QStringLiteral("opening: 35 round trips, device without latency"), median(answered),
               QStringLiteral("ms"));
    // The rest are the 5 ms that the first request of each of three steps gets, for others to join it.
    report.add(QStringLiteral("  of this: processor time"), median(processor), QStringLiteral("ms"));
    report.addAtMost(QStringLiteral("  against a bare ping-pong of the same texts"),
                     median(processor) / median(bare), QStringLiteral("x"), 2);
    report.add(QStringLiteral("opening: from there to the fixed look at the mixer"), median(look),
               QStringLiteral("ms"));
}

void measureMemory(Report &report, PlexoPluginFactory *factory)
{
    std::vector<std::unique_ptr<support::EditorSession>> sessions;
    QVector<double> growth;
    for (int run = 0; run < Runs; ++run) {
        const double before = residentKiB();
        sessions.push_back(std::make_unique<support::EditorSession>(factory));
        sessions.back()->goLive();
        growth.append(residentKiB() - before);
    }
    report.add(QStringLiteral("resident memory of one more open editor"), median(growth),
               QStringLiteral("KiB"));
}

} // namespace

void measureOpening(Report &report)
{
    PlexoPluginFactory *factory = load(report);
    measureWindow(report, factory);
    report.add(QStringLiteral("  of this: createPlugin()"),
               medianMicroseconds(Runs, [factory] { delete factory->createPlugin(nullptr); }) / 1000.0,
               QStringLiteral("ms"));
    measureQuery(report, factory);
    measureMemory(report, factory);
}

} // namespace bench
