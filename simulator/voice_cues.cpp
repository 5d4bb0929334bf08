#include "simulator/voice_cues.h"

#include <QJsonObject>

namespace sim {

QString VoiceCues::play(int cue)
{
    if (!isValid(cue))
        return QStringLiteral("the cue holds no recording");
    m_playing = cue;
    m_left = m_length.at(size_t(cue));
    return {};
}

void VoiceCues::advance(int ms)
{
    m_left -= ms;
    if (m_left <= 0)
        m_playing = -1;
}

void VoiceCues::beginLoad(int cue)
{
    m_loading = cue;
    if (m_playing == cue)
        m_playing = -1;
}

void VoiceCues::abandonLoad()
{
    m_loading = -1;
}

void VoiceCues::finishLoad(int ms)
{
    if (isLoading())
        m_length.at(size_t(m_loading)) = qMax(ms, 1);
    m_loading = -1;
}

void VoiceCues::restoreFactory()
{
    m_length = VoiceCues().m_length;
    m_playing = -1;
}

bool VoiceCues::isValid(int cue) const
{
    return cue != m_loading && m_length.at(size_t(cue)) > 0;
}

QJsonArray VoiceCues::status() const
{
    QJsonArray cues;
    for (int cue = 0; cue < VoiceCueCount; ++cue)
        cues.append(QJsonObject{{QStringLiteral("valid"), isValid(cue)}});
    return cues;
}

QJsonArray VoiceCues::toJson() const
{
    QJsonArray lengths;
    for (const int length : m_length)
        lengths.append(length);
    return lengths;
}

void VoiceCues::fromJson(const QJsonArray &lengths)
{
    for (size_t cue = 0; cue < m_length.size(); ++cue)
        m_length[cue] = qMax(lengths.at(int(cue)).toInt(), 0);
}

} // namespace sim
