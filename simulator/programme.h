#pragma once

#include <QRandomGenerator>

#include <vector>

namespace sim {

/// How the level of one kind of programme moves.
struct ProgrammeStyle
{
    double peakDb; ///< level of the loudest beats
    double fallDb; ///< how far the level falls until the next beat
    double accentDb; ///< how much softer than the loudest a beat can be
    double pauseShare; ///< share of phrases that are pauses, 0 to 1
    int beatMs; ///< time from one beat or syllable to the next
    int phraseBeats; ///< beats until there may be a pause
};

/// The level of one audio source over time: beats that decay, softer and louder ones, pauses between
/// phrases. Repeatable by its seed.
class ProgrammeSource
{
public:
    ProgrammeSource(const ProgrammeStyle &style, quint32 seed);

    void advance(int ms);
    double level() const; ///< dB

private:
    void beginBeat();

    ProgrammeStyle m_style;
    QRandomGenerator m_random;
    int m_inBeat = 0; // ms
    int m_beat = 0;
    double m_accent = 0;
    bool m_pause = false;
};

/// What comes in at the device's inputs: two speakers and a stereo programme from the network, stereo from
/// the computer and from the phone, and the voice of the cues. Indices are those of the mixer's sources, 0-8.
class Programme
{
public:
    explicit Programme(quint32 seed);

    void advance(int ms);
    double level(int source) const; ///< dB

private:
    std::vector<ProgrammeSource> m_sources;
};

/// The strength at which the phone is received, while its owner walks to the far end of the building and
/// back: from -50 dBm down to -130 dBm and up again, with some flutter.
class SignalWalk
{
public:
    static constexpr int NearDbm = -50;

    explicit SignalWalk(quint32 seed)
        : m_random(seed)
    {
    }

    /// -130 to -50 dBm.
    int rssi() const { return m_rssi; }
    void advance(int ms);

private:
    QRandomGenerator m_random;
    int m_walked = 0; // ms since the walk began
    int m_rssi = NearDbm;
};

} // namespace sim
