#include "devhost/tour/tour_run.h"

#include "devhost/host.h"
#include "devhost/host_window.h"
#include "devhost/tour/areas.h"

#include <QDir>

namespace devhost::tour {

TourRun::TourRun(Host *host, HostWindow *window, const QString &folder)
    : m_folder(QDir(folder).absolutePath())
    , m_guide(host, window, m_folder)
    , m_out(stdout)
{
    m_recorder.record(host->transport());
    const Steps steps = openSteps(m_guide) + dspSteps(m_guide) + settingsSteps(m_guide) + stateSteps(m_guide)
        + closeSteps(m_guide);
    m_tour.reset(new Tour(steps, m_folder, &m_out));
    connect(m_tour.data(), &Tour::finished, this, &TourRun::finished);
}

TourRun::~TourRun() = default;

QString TourRun::start()
{
    QDir folder(m_folder);
    if (!folder.mkpath(QStringLiteral(".")))
        return tr("The folder %1 cannot be made. Name another one with --tour.").arg(m_folder);
    // Pictures of an earlier tour would be taken for this one's.
    for (const QString &picture : folder.entryList({QStringLiteral("*.png")}, QDir::Files))
        folder.remove(picture);
    QString error = m_recorder.start(folder.filePath(QStringLiteral("messages.jsonl")));
    if (error.isEmpty())
        m_tour->start();
    return error;
}

} // namespace devhost::tour
