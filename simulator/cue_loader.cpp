#include "simulator/cue_loader.h"

#include "simulator/wave_file.h"

#include <QDebug>
#include <QDir>
#include <QSaveFile>

namespace sim {

CueLoader::CueLoader(TftpFetcher *fetcher, const QString &keepFile, QObject *parent)
    : QObject(parent)
    , m_keepFile(keepFile)
{
    connect(fetcher, &TftpFetcher::finished, this, &CueLoader::examine);
    connect(fetcher, &TftpFetcher::failed, this, &CueLoader::reject);
}

void CueLoader::examine(const QByteArray &file)
{
    if (!m_keepFile.isEmpty())
        keep(file);
    const WaveCheck check = checkWave(file);
    if (!check.problem.isEmpty()) {
        reject(
            QStringLiteral("the file of %1 bytes cannot be played: %2").arg(file.size()).arg(check.problem));
        return;
    }
    qInfo() << "voice cue loaded:" << file.size() << "bytes," << check.lengthMs << "ms";
    emit loaded(check.lengthMs);
}

void CueLoader::reject(const QString &reason)
{
    qWarning().noquote() << "voice cue not loaded:" << reason;
    emit rejected();
}

void CueLoader::keep(const QByteArray &file)
{
    QSaveFile output(m_keepFile);
    if (output.open(QIODevice::WriteOnly) && output.write(file) == file.size() && output.flush()
        && output.commit())
        return;
    qWarning().noquote() << QDir::toNativeSeparators(m_keepFile) + QStringLiteral(": ")
            + output.errorString();
}

} // namespace sim
