#pragma once

#include <QString>

namespace sim {

/// The music player of the simulated phone: a fixed play list that moves on by itself and starts over.
class Player
{
public:
    QString song() const;
    QString artist() const;
    QString album() const;
    bool isPlaying() const { return m_playing; }

    /// 0 (silent) to 15 (full).
    int volume() const { return m_volume; }

    /// What the volume does to the audio, in dB.
    double volumeDb() const;

    void play() { m_playing = true; }
    void pause() { m_playing = false; }
    void next() { skip(1); }
    void previous() { skip(-1); }
    void louder();
    void softer();
    void advance(int ms);

private:
    void skip(int tracks);

    int m_track = 0;
    int m_played = 0; // ms of the current track
    int m_volume = 12;
    bool m_playing = true;
};

} // namespace sim
