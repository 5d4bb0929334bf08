#pragma once

#include "simulator/device_table.h"

#include <QJsonArray>

#include <array>

namespace sim {

/// The four recordings of the device, and the one that plays at the moment.
class VoiceCues
{
public:
    /// A reason when the cue holds no playable recording, else "".
    QString play(int cue);
    void advance(int ms);
    bool isPlaying() const { return m_playing >= 0; }

    /// While a recording is fetched the cue is not valid; a failed fetch leaves it as it was.
    bool isLoading() const { return m_loading >= 0; }
    void beginLoad(int cue);
    void abandonLoad();
    void finishLoad(int ms); ///< without effect when the load was abandoned meanwhile

    void restoreFactory();

    /// The content of "/status/voice_cue": an object with `valid` for each cue.
    QJsonArray status() const;

    /// What outlives a restart: the length of each recording in ms, 0 for none.
    QJsonArray toJson() const;
    void fromJson(const QJsonArray &lengths);

private:
    bool isValid(int cue) const;

    std::array<int, VoiceCueCount> m_length{1400, 1100, 1300, 1500}; // ms
    int m_loading = -1;
    int m_playing = -1;
    int m_left = 0; // ms still to play
};

} // namespace sim
