#include "simulator/player.h"

#include <QtGlobal>

namespace sim {

namespace {

struct Track
{
    const char *song;
    const char *artist;
    const char *album;
    int seconds;
};

constexpr Track PlayList[] = {
    {"Slow Tide", "Marla Quill", "Harbour Lights", 34},
    {"Lanterns", "Marla Quill", "Harbour Lights", 28},
    {"The Long Pier", "Marla Quill", "Harbour Lights", 41},
    {"Zugvögel über Eis", "Nordwind Quartett", "Jahreszeiten", 37},
    {"Regenlied", "Nordwind Quartett", "Jahreszeiten", 25},
    {"Copper & Rye", "The Ferrymen", "Four Bridges \"Live\"", 30},
    {"Half Past Amber", "The Ferrymen", "Four Bridges \"Live\"", 32},
    {"夜の電車", "Sora Mizuki", "終電", 39},
};

constexpr int TrackCount = int(sizeof PlayList / sizeof *PlayList);
constexpr int Loudest = 15;
constexpr double DbPerStep = 3.0;

} // namespace

QString Player::song() const
{
    return QString::fromUtf8(PlayList[m_track].song);
}

QString Player::artist() const
{
    return QString::fromUtf8(PlayList[m_track].artist);
}

QString Player::album() const
{
    return QString::fromUtf8(PlayList[m_track].album);
}

double Player::volumeDb() const
{
    return m_volume == 0 ? -100.0 : DbPerStep * (m_volume - Loudest);
}

void Player::louder()
{
    m_volume = qMin(m_volume + 1, Loudest);
}

void Player::softer()
{
    m_volume = qMax(m_volume - 1, 0);
}

void Player::advance(int ms)
{
    if (!m_playing)
        return;
    m_played += ms;
    if (m_played >= PlayList[m_track].seconds * 1000)
        next();
}

void Player::skip(int tracks)
{
    m_track = (m_track + tracks + TrackCount) % TrackCount;
    m_played = 0;
}

} // namespace sim
