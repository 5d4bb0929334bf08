#include "devhost/tour/tour_run.h"

#include "devhost/host.h"
#include "devhost/tour/areas.h"

#include <QDir>

namespace devhost::tour {

namespace {

Steps allSteps(Guide &guide)
{
    return openSteps(guide) + dspSteps(guide) + settingsSteps(guide) + stateSteps(guide) + closeSteps(guide);
}

} // namespace

TourRun::TourRun(Host *host, HostWindow *window, const QString &folder)
    : m_folder(QDir(folder).absolutePath())
    , m_recorder(host->transport())
    , m_guide(host, window, m_folder)
    , m_out(stdout)
    , m_tour(allSteps(m_guide), m_folder, &m_out)
{
    connect(&m_tour, &Tour::finished, this, &TourRun::finished);
}

QString TourRun::start()
{
    QDir folder(m_folder);
    if (!folder.mkpath(QStringLiteral(".")))
        return tr("The folder %1 cannot be made. Name another one with --tour.")
            .arg(QDir::toNativeSeparators(m_folder));
    // Pictures of an earlier tour would be taken for this one's.
    for (const QString &picture : folder.entryList({QStringLiteral("*.png")}, QDir::Files))
        folder.remove(picture);
    QString error = m_recorder.start(folder.filePath(QStringLiteral("messages.jsonl")));
    if (error.isEmpty())
        m_tour.start();
    return error;
}

} // namespace devhost::tour
