#include "simulator/programme.h"

#include <QtGlobal>

namespace sim {

namespace {

constexpr double RoomDb = -72.0; // what a microphone hears in a pause

constexpr ProgrammeStyle Presenter{-12, 9, 8, 0.2, 210, 14};
constexpr ProgrammeStyle Guest{-16, 10, 9, 0.55, 240, 9};
constexpr ProgrammeStyle Concert{-10, 14, 7, 0.05, 520, 64};
constexpr ProgrammeStyle Desktop{-9, 8, 4, 0.1, 430, 48};
constexpr ProgrammeStyle Song{-8, 7, 3, 0.0, 480, 128};
constexpr ProgrammeStyle Prompt{-6, 8, 5, 0.0, 190, 128};

constexpr int FarDbm = -130;
constexpr int WayMs = 24000; // one way
constexpr int FlutterDb = 2;

} // namespace

ProgrammeSource::ProgrammeSource(const ProgrammeStyle &style, quint32 seed)
    : m_style(style)
    , m_random(seed)
{
    beginBeat();
}

void ProgrammeSource::advance(int ms)
{
    m_inBeat += ms;
    while (m_inBeat >= m_style.beatMs) {
        m_inBeat -= m_style.beatMs;
        ++m_beat;
        beginBeat();
    }
}

double ProgrammeSource::level() const
{
    if (m_pause)
        return RoomDb;
    return m_style.peakDb - m_accent - m_style.fallDb * m_inBeat / m_style.beatMs;
}

void ProgrammeSource::beginBeat()
{
    if (m_beat % m_style.phraseBeats == 0)
        m_pause = m_random.generateDouble() < m_style.pauseShare;
    m_accent = m_random.bounded(m_style.accentDb);
}

Programme::Programme(quint32 seed)
{
    const ProgrammeStyle styles[]
        = {Presenter, Guest, Concert, Concert, Desktop, Desktop, Song, Song, Prompt};
    quint32 offset = 0;
    for (const ProgrammeStyle &style : styles)
        m_sources.emplace_back(style, seed * 16 + offset++);
}

void Programme::advance(int ms)
{
    for (ProgrammeSource &source : m_sources)
        source.advance(ms);
}

double Programme::level(int source) const
{
    return m_sources.at(size_t(source)).level();
}

void SignalWalk::advance(int ms)
{
    m_walked = (m_walked + ms) % (2 * WayMs);
    const int distance = m_walked < WayMs ? m_walked : 2 * WayMs - m_walked;
    const int steady = NearDbm + (FarDbm - NearDbm) * distance / WayMs;
    m_rssi = qBound(FarDbm, steady + m_random.bounded(-FlutterDb, FlutterDb + 1), NearDbm);
}

} // namespace sim
