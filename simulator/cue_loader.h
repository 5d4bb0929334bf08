#pragma once

#include "simulator/tftp_fetcher.h"

namespace sim {

/// Fetches a recording and decides whether the device can play it.
class CueLoader : public QObject
{
    Q_OBJECT

public:
    /// Each file that arrives is also written to `keepFile`, playable or not; nothing is kept when that is
    /// empty.
    CueLoader(TftpFetcher *fetcher, const QString &keepFile, QObject *parent = nullptr);

signals:
    void loaded(int lengthMs);

    /// Nothing playable came. The log says why.
    void rejected();

private:
    void examine(const QByteArray &file);
    void reject(const QString &reason);
    void keep(const QByteArray &file);

    QString m_keepFile;
};

} // namespace sim
