#include "devhost/tour/tour_run.h"

#include "devhost/host.h"
#include "devhost/options.h"
#include "devhost/tour/areas.h"
#include "devhost/tour/tour_files.h"

#include <QDir>

namespace devhost::tour {

namespace {

Steps allSteps(Guide &guide, bool anyDevice)
{
    Steps steps
        = openSteps(guide) + dspSteps(guide) + settingsSteps(guide) + stateSteps(guide) + closeSteps(guide);
    if (!anyDevice)
        steps += hostSteps(guide) + openAgainSteps(guide) + refusalSteps(guide) + connectionSteps(guide)
            + lossSteps(guide);
    return steps;
}

} // namespace

TourRun::TourRun(Host *host, HostWindow *window, const Options &options)
    : m_folder(QDir(options.tourFolder).absolutePath())
    , m_recorder(host->transport())
    , m_guide(host, window, m_folder, options.tourRealDevice)
    , m_out(stdout)
    , m_tour(allSteps(m_guide, options.tourRealDevice), m_folder, &m_out)
{
    connect(&m_tour, &Tour::finished, this, &TourRun::finished);
}

QString TourRun::start()
{
    QDir folder(m_folder);
    if (!folder.mkpath(QStringLiteral(".")))
        return tr("The folder %1 cannot be made. Name another one with --tour.")
            .arg(QDir::toNativeSeparators(m_folder));
    removeEarlierFiles(folder);
    QString error = m_recorder.start(folder.filePath(QStringLiteral("messages.jsonl")));
    if (error.isEmpty())
        m_tour.start();
    return error;
}

} // namespace devhost::tour
