#include "devhost/tour/tour.h"

#include "devhost/tour/tour_files.h"

#include <QGuiApplication>
#include <QPixmap>
#include <QScreen>

namespace devhost::tour {

namespace {

constexpr int PollMs = 20; // from asking a step whether it is confirmed to asking it again
constexpr int PictureLimitMs = 10000; // after which there is nothing to be pictured
constexpr int PaintMs = 400; // that a window gets to paint itself before its picture is taken

} // namespace

Tour::Tour(const Steps &steps, const QString &folder, QTextStream *out, QObject *parent)
    : QObject(parent)
    , m_steps(steps)
    , m_folder(folder)
    , m_out(out)
{
    m_poll.setInterval(PollMs);
    connect(&m_poll, &QTimer::timeout, this, &Tour::poll);
}

void Tour::start()
{
    m_poll.start();
    begin();
}

void Tour::begin()
{
    if (m_current == m_steps.size()) {
        m_poll.stop();
        emit finished(true);
        return;
    }
    m_phase = Phase::Acting;
    m_clock.start();
    // Posted: the act may open a dialog and return only after later steps have closed it.
    QMetaObject::invokeMethod(
        this, [this, number = m_current] { act(number); }, Qt::QueuedConnection);
}

void Tour::act(int number)
{
    m_phase = Phase::Waiting;
    const Step step = m_steps.at(number);
    const QString obstacle = step.act ? step.act() : QString();
    if (!obstacle.isEmpty() && number == m_current)
        end(obstacle);
}

void Tour::poll()
{
    const Step &step = m_steps.at(m_current);
    if (m_phase == Phase::Painting) {
        if (m_clock.elapsed() >= PaintMs)
            photograph();
        return;
    }
    if (m_phase == Phase::Acting)
        return;
    const QString missing = step.missing ? step.missing() : QString();
    if (missing.isEmpty())
        confirm();
    else if (m_clock.elapsed() > step.timeLimitMs)
        end(QStringLiteral("after %1 s %2").arg(step.timeLimitMs / 1000.0).arg(missing));
}

void Tour::confirm()
{
    if (m_steps.at(m_current).picture.isEmpty()) {
        goOn();
        return;
    }
    m_phase = Phase::Painting;
    m_clock.start();
    m_steps.at(m_current).area();
}

void Tour::photograph()
{
    const Step &step = m_steps.at(m_current);
    const QRect area = step.area();
    // The screen, not the widget: a Quick view and the windows above are on it as the user sees them.
    const QPixmap picture
        = QGuiApplication::primaryScreen()->grabWindow(0, area.x(), area.y(), area.width(), area.height());
    const bool isThere = !area.isEmpty() && !picture.isNull();
    if (!isThere && m_clock.elapsed() < PictureLimitMs)
        return; // what is to be pictured may be on its way
    const QString name
        = QStringLiteral("%1-%2.png").arg(++m_pictures, 2, 10, QLatin1Char('0')).arg(step.picture);
    noteFile(m_folder, name);
    if (isThere && picture.save(m_folder.filePath(name)))
        goOn();
    else
        end(QStringLiteral("the picture %1 of %2 x %3 at %4, %5 could not be %6")
                .arg(name)
                .arg(area.width())
                .arg(area.height())
                .arg(area.x())
                .arg(area.y())
                .arg(isThere ? QStringLiteral("written") : QStringLiteral("taken")));
}

void Tour::goOn()
{
    print(QStringLiteral("ok"));
    ++m_current;
    begin();
}

void Tour::end(const QString &failure)
{
    m_poll.stop();
    print(QStringLiteral("FAILED: %1").arg(failure));
    const QString name = QStringLiteral("failed.png");
    noteFile(m_folder, name);
    QGuiApplication::primaryScreen()->grabWindow(0).save(m_folder.filePath(name));
    emit finished(false);
}

void Tour::print(const QString &outcome)
{
    *m_out << QStringLiteral("%1/%2 %3: %4")
                  .arg(m_current + 1)
                  .arg(m_steps.size())
                  .arg(m_steps.at(m_current).name, outcome)
           << Qt::endl;
}

} // namespace devhost::tour
